# vellomar_spare_generated_code(TARGET): what Qt's QML compiler writes isn't ours to warn about.
function(vellomar_spare_generated_code target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/\\.rcc/|_qmltyperegistrations\\.cpp$")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
