# The private bin/ of the resources holds restic and rclone. The set-up puts
# them into the first build folder; every other one links to it.
set(VELLOMAR_TOOLS_DIR ${CMAKE_SOURCE_DIR}/build/share/vellomar/bin
  CACHE PATH "Folder that holds restic and rclone")

set(private_bin ${CMAKE_BINARY_DIR}/share/vellomar/bin)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share/vellomar)
if(NOT private_bin STREQUAL VELLOMAR_TOOLS_DIR AND NOT EXISTS ${private_bin})
  file(CREATE_LINK ${VELLOMAR_TOOLS_DIR} ${private_bin} SYMBOLIC)
endif()

configure_file(${CMAKE_SOURCE_DIR}/resources/vellomar.svg
  ${CMAKE_BINARY_DIR}/share/vellomar/vellomar.svg COPYONLY)
