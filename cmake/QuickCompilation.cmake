# Two ways to compile all of it from nothing in less time; whoever changes a file here and there is
# quicker without them.
option(VELLOMAR_UNITY "Compile the sources of each library as one" OFF)
option(VELLOMAR_PRECOMPILE "Precompile the headers that most tests include" OFF)

set(CMAKE_UNITY_BUILD ${VELLOMAR_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 0) # no bound: all of a library
