# clang-format and clang-tidy as tests of this build. A file is looked at again only when it, a header or the rules
# have changed.

find_program(VQS_CLANG_FORMAT NAMES clang-format-19 REQUIRED)
find_program(VQS_CLANG_TIDY NAMES clang-tidy-19 REQUIRED)

set(code_folders bench documents examples format fuzz host include simulator src tests tool)
list(TRANSFORM code_folders PREPEND ${PROJECT_SOURCE_DIR}/)
list(TRANSFORM code_folders APPEND "/*.h" OUTPUT_VARIABLE header_patterns)
list(TRANSFORM code_folders APPEND "/*.cpp" OUTPUT_VARIABLE source_patterns)
list(TRANSFORM code_folders APPEND "/*.c" OUTPUT_VARIABLE c_patterns)
file(GLOB_RECURSE code_headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${header_patterns})
file(GLOB_RECURSE code_sources CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${source_patterns} ${c_patterns})

add_custom_target(format
  COMMAND ${VQS_CLANG_FORMAT} -i ${code_headers} ${code_sources}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Formatting all code")

list(TRANSFORM code_headers PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE tidy_headers)
# What is for Windows has the commands of its build. Left out are the few files there of the host, the embedded
# simulator and the tool, and the tests of Windows alone, for which GoogleTest would have to be built for it first.
set(windows_sources ${code_sources})
list(FILTER windows_sources INCLUDE REGEX "^simulator/(device|installer)/")
set(tidy_sources ${code_sources})
list(FILTER tidy_sources INCLUDE REGEX "^(bench|documents|format|fuzz|host|simulator|src)/")
list(FILTER tidy_sources EXCLUDE REGEX "^simulator/(device|installer)/|^host/windows_|_windows\\.cpp$")
# The peers' code is made from their schemas when the benchmarks are built.
list(FILTER tidy_sources EXCLUDE REGEX "^bench/(peers/|peers\\.cpp)")
find_package(Protobuf QUIET)
find_program(VQS_FLATC flatc)
set(can_configure_bench OFF)
if(Protobuf_FOUND AND VQS_FLATC)
  set(can_configure_bench ON)
else()
  list(FILTER tidy_sources EXCLUDE REGEX "^bench/")
endif()
if(NOT tidy_sources OR NOT tidy_headers)
  message(FATAL_ERROR "no code was found to look at")
endif()

# clang cannot read g++'s precompiled headers, nor options of g++ alone: it gets the commands of builds without them, in
# which a program is one source where it is to be looked at in one piece.
set(databases ${PROJECT_BINARY_DIR}/tidy)
file(GLOB_RECURSE build_files CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/bench/CMakeLists.txt ${PROJECT_SOURCE_DIR}/documents/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/format/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/fuzz/CMakeLists.txt ${PROJECT_SOURCE_DIR}/host/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/simulator/CMakeLists.txt ${PROJECT_SOURCE_DIR}/src/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/tests/CMakeLists.txt ${PROJECT_SOURCE_DIR}/tool/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/cmake/*.cmake)
function(vqs_tidy_database name)
  set(database ${databases}/${name})
  add_custom_command(OUTPUT ${database}/compile_commands.json
    COMMAND ${CMAKE_COMMAND} -S ${PROJECT_SOURCE_DIR} -B ${database} -G ${CMAKE_GENERATOR}
      -D CMAKE_DISABLE_PRECOMPILE_HEADERS=ON ${ARGN} >/dev/null
    DEPENDS ${build_files}
    COMMENT "Listing the ${name} commands for clang-tidy")
endfunction()
vqs_tidy_database(native -D CMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} -D VQS_PROTOCOL_TESTS=ON -D VQS_TEST_PIECES=ON
  -D VQS_BENCHMARKS=${can_configure_bench} -D VQS_HAS_BLOCK_STRATEGIES=OFF)
vqs_tidy_database(windows -D CMAKE_TOOLCHAIN_FILE=${PROJECT_SOURCE_DIR}/cmake/mingw-w64.cmake -D CMAKE_BUILD_TYPE=Release
  -D VQS_TESTS=OFF)

set(stamps)
macro(vqs_tidy_stamp database name sources)
  set(stamp ${databases}/${name})
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${ARGN}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${sources} ${tidy_headers} ${PROJECT_SOURCE_DIR}/.clang-tidy ${databases}/${database}/compile_commands.json
    COMMENT "Looking at ${name}")
  list(APPEND stamps ${stamp})
endmacro()

macro(vqs_tidy_source database source)
  string(MAKE_C_IDENTIFIER ${source} name)
  vqs_tidy_stamp(${database} ${name} ${PROJECT_SOURCE_DIR}/${source}
    ${VQS_CLANG_TIDY} --quiet -p ${databases}/${database} ${PROJECT_SOURCE_DIR}/${source})
endmacro()
# What is shipped of this build first: the test looks at that alone.
set(shipped_sources ${tidy_sources})
list(FILTER shipped_sources EXCLUDE REGEX "^(bench|fuzz)/")
list(REMOVE_ITEM tidy_sources ${shipped_sources})
foreach(source IN LISTS shipped_sources)
  vqs_tidy_source(native ${source})
endforeach()

# A program, of the sources in a folder.
macro(vqs_tidy_program folder target)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  set(piece ${databases}/native/${folder}/CMakeFiles/${target}.dir/Unity/unity_0_cxx.cxx)
  set(checks)
  # In tests a value that is not there is a failure, whether an assertion says so before or value() throws; the check
  # understands neither.
  if("${folder}" MATCHES "^tests")
    set(checks -D CHECKS=--checks=-bugprone-unchecked-optional-access)
  endif()
  vqs_tidy_stamp(native ${target} "${sources}" ${CMAKE_COMMAND} -D TIDY=${VQS_CLANG_TIDY}
    -D DATABASE=${databases}/native -D PIECE=${piece} ${checks} -P ${PROJECT_SOURCE_DIR}/cmake/TidyPiece.cmake)
endmacro()
# The tool is looked at in the piece that it is compiled in, a test program in a piece too.
vqs_tidy_program(tool vqs)
add_custom_target(tidy_shipped DEPENDS ${stamps})

foreach(source IN LISTS tidy_sources)
  vqs_tidy_source(native ${source})
endforeach()
foreach(source IN LISTS windows_sources)
  vqs_tidy_source(windows ${source})
endforeach()
foreach(target test_support scripted_driver faults)
  vqs_tidy_program(tests vqs_${target})
endforeach()
vqs_tidy_program(tests/lifetime ending_client)
vqs_tidy_program(tests/lifetime loading_client)
# Every test program, found where it is added. Not those for Windows alone, and not the one of format's sources, which are
# looked at one by one.
file(GLOB_RECURSE test_lists CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests/CMakeLists.txt)
list(FILTER test_lists EXCLUDE REGEX "^tests/windows/")
foreach(test_list IN LISTS test_lists)
  cmake_path(GET test_list PARENT_PATH folder)
  file(STRINGS ${PROJECT_SOURCE_DIR}/${test_list} lines REGEX "^ *vqs_add_test(s|_program)\\([a-z]")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[^(]*\\(([a-z_]+).*" "\\1" target "${line}")
    if(NOT target STREQUAL performance_byte_tests)
      vqs_tidy_program(${folder} ${target})
    endif()
  endforeach()
endforeach()
add_custom_target(tidy DEPENDS ${stamps})

vqs_add_check(style.format ${CMAKE_COMMAND} -E chdir ${PROJECT_SOURCE_DIR}
  ${VQS_CLANG_FORMAT} --dry-run --Werror ${code_headers} ${code_sources})
vqs_add_check(style.tidy ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target tidy_shipped)

# The longest of all, so it starts first.
set_tests_properties(${VQS_TEST_PREFIX}style.tidy PROPERTIES COST 1000 TIMEOUT 1800)
