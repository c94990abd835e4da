# src/windows/exports.def is the one list of exported names; other linkers read it in their own form.

function(vqs_write_version_script def_file output)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${def_file})
  file(STRINGS ${def_file} lines REGEX "^  [A-Za-z0-9_]+")
  set(script "{\n  global:\n")
  foreach(line IN LISTS lines)
    string(REGEX MATCH "[A-Za-z0-9_]+" name "${line}")
    string(APPEND script "    ${name};\n")
  endforeach()
  string(APPEND script "  local:\n    *;\n};\n")
  file(CONFIGURE OUTPUT ${output} CONTENT "${script}" @ONLY)
endfunction()

# Names that are a second name of another function, for the linkers of ELF systems.
function(vqs_export_aliases def_file output)
  file(STRINGS ${def_file} lines REGEX "^  [A-Za-z0-9_]+ = ")
  set(options)
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^  ([A-Za-z0-9_]+) = ([A-Za-z0-9_]+).*" "LINKER:--defsym=\\1=\\2" option "${line}")
    list(APPEND options ${option})
  endforeach()
  set(${output} ${options} PARENT_SCOPE)
endfunction()
