# Looks at the sources of one test program as one piece: GoogleTest's own headers take clang-tidy longer than a test does.
# Names that sources have for themselves stay apart, because clang-tidy reads each with a name for its unnamed namespace.
#   cmake -D TIDY=... -D DATABASE=... -D PIECE=... [-D CHECKS=--checks=...] -P TidyPiece.cmake

file(STRINGS ${PIECE} includes REGEX "^#include ")
cmake_path(REMOVE_EXTENSION PIECE OUTPUT_VARIABLE folder)
set(entries)
set(number 0)
foreach(include IN LISTS includes)
  string(REGEX REPLACE "^#include \"(.*)\"$" "\\1" source ${include})
  file(READ ${source} text)
  math(EXPR number "${number} + 1")
  string(REPLACE "\nnamespace {\n" "\nnamespace source${number} {\n" text "${text}")
  string(REGEX REPLACE "}  // namespace\n}  // namespace test\n$" "}\n}\n" text "${text}")
  # What stands behind it uses its names.
  string(REPLACE "\n}  // namespace\n" "\n} using namespace source${number};  // NOLINT\n" text "${text}")
  file(WRITE ${folder}/${number}.cpp "${text}")
  list(APPEND entries "{\"name\": \"${source}\", \"type\": \"file\", \"external-contents\": \"${folder}/${number}.cpp\"}")
endforeach()
list(JOIN entries ", " entries)
file(WRITE ${folder}/overlay.json "{\"version\": 0, \"use-external-names\": false, \"roots\": [${entries}]}")
execute_process(COMMAND ${TIDY} --quiet ${CHECKS} -p ${DATABASE} --vfsoverlay=${folder}/overlay.json ${PIECE}
  COMMAND_ERROR_IS_FATAL ANY)
