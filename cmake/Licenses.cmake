# The notices of the open-source parts, as the window shows them: a text for each in the licenses/ of
# the resources, from what its Debian package says of itself. The set-up puts those of restic and
# rclone beside the tools.
set(licenses ${CMAKE_BINARY_DIR}/share/vellomar/licenses)
get_filename_component(tool_licenses ${VELLOMAR_TOOLS_DIR}/../licenses ABSOLUTE)

# NAME=FILE
set(notices
  "restic=${tool_licenses}/restic.txt"
  "rclone=${tool_licenses}/rclone.txt")
foreach(notice
    "Qt=qt6-base-dev"
    "Qt Quick=qt6-declarative-dev"
    "Qt SVG=qt6-svg-dev"
    "GLib=libglib2.0-dev"
    "ICU=libicu-dev"
    "libsecret=libsecret-1-dev"
    "tl-expected=libexpected-dev"
    "Bootstrap Icons=bootstrap-icons"
    "Inter=fonts-inter"
    "Quicksand=fonts-quicksand")
  string(REGEX REPLACE "=(.*)" "=/usr/share/doc/\\1/copyright" notice "${notice}")
  list(APPEND notices "${notice}")
endforeach()

file(MAKE_DIRECTORY ${licenses})
set(common)
foreach(notice IN LISTS notices)
  string(REGEX MATCH "^(.*)=(.*)$" notice "${notice}")
  set(name "${CMAKE_MATCH_1}")
  set(file "${CMAKE_MATCH_2}")
  if(NOT EXISTS ${file})
    message(WARNING "The notice of ${name} is missing: ${file}")
    continue()
  endif()
  # Those of the tools stand in place already, in the folder of the set-up.
  if(NOT file STREQUAL "${licenses}/${name}.txt")
    configure_file(${file} "${licenses}/${name}.txt" COPYONLY)
  endif()
  # Debian keeps the licences that are long and widely used in files of their own.
  file(STRINGS ${file} lines REGEX "/common-licenses/")
  string(REGEX MATCHALL "/common-licenses/[A-Za-z0-9.+-]*[A-Za-z0-9+]" named "${lines}")
  list(APPEND common ${named})
endforeach()

list(REMOVE_DUPLICATES common)
foreach(license IN LISTS common)
  get_filename_component(name ${license} NAME)
  configure_file(/usr/share${license} ${licenses}/${name}.txt COPYONLY)
endforeach()
