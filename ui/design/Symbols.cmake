# Maps roles to drawings of the icon set: role=drawing. Pages and code use
# roles only.
set(symbols
  arrow.clockwise=arrow-clockwise
  arrow.triangle.2.circlepath=arrow-repeat
  checkmark=check-lg
  checkmark.circle=check-circle
  checkmark.circle.fill=check-circle-fill
  checkmark.shield=shield-check
  chevron.down=chevron-down
  chevron.right=chevron-right
  clock.arrow.circlepath=clock-history
  cloud=cloud
  ellipsis=three-dots
  exclamationmark.circle.fill=exclamation-circle-fill
  exclamationmark.shield=shield-exclamation
  exclamationmark.triangle=exclamation-triangle
  externaldrive=hdd
  eye=eye
  folder=folder
  gauge.with.needle=speedometer2
  gearshape=gear
  house=house
  list.bullet.rectangle=card-list
  lock.open=unlock
  magnifyingglass=search
  power=power
  server.rack=hdd-rack
  xmark=x-lg
  xmark.circle.fill=x-circle-fill)

find_path(BOOTSTRAP_ICONS_DIR check-lg.svg
  PATHS /usr/share/bootstrap-icons/svg
  DOC "Folder of the icon set's drawings"
  REQUIRED)

# vellomar_symbols(TARGET): builds the drawings into a target, each under the name of its role.
function(vellomar_symbols target)
  foreach(pair IN LISTS symbols)
    string(REPLACE "=" ";" pair ${pair})
    list(GET pair 0 role)
    list(GET pair 1 drawing)
    set(file ${BOOTSTRAP_ICONS_DIR}/${drawing}.svg)
    if(NOT EXISTS ${file})
      message(FATAL_ERROR "The icon set has no ${drawing}.svg, which stands for ${role}.")
    endif()
    set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${role}.svg)
    list(APPEND files ${file})
  endforeach()
  qt_add_resources(${target} vellomar_symbols PREFIX /vellomar/symbols BASE ${BOOTSTRAP_ICONS_DIR}
    FILES ${files})
endfunction()
