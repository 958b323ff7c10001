# What every target of ours is compiled with; each links this one target.
add_library(vellomar_options INTERFACE)

target_compile_options(vellomar_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

target_compile_definitions(vellomar_options INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_KEYWORDS # GLib has a field named signals
  QT_USE_QSTRINGBUILDER)

target_include_directories(vellomar_options INTERFACE ${CMAKE_SOURCE_DIR})

set(VELLOMAR_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")
if(VELLOMAR_SANITIZE)
  target_compile_options(vellomar_options INTERFACE
    -fsanitize=${VELLOMAR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vellomar_options INTERFACE -fsanitize=${VELLOMAR_SANITIZE})
endif()
