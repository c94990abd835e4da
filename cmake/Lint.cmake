# clang-format and clang-tidy as tests of this build. A file is looked at again only when it, a header or the rules
# have changed.

find_program(VQS_CLANG_FORMAT NAMES clang-format-19 REQUIRED)
find_program(VQS_CLANG_TIDY NAMES clang-tidy-19 REQUIRED)

set(code_folders bench examples format fuzz host include simulator src tests tool)
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

set(tidy_headers ${code_headers})
list(FILTER tidy_headers INCLUDE REGEX "^(include|format|src|host|simulator|tool)/")
list(TRANSFORM tidy_headers PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE tidy_headers_full)
set(tidy_sources ${code_sources})
list(FILTER tidy_sources INCLUDE REGEX "^(format|src|host|simulator|tool)/")
# What is for Windows needs its headers.
list(FILTER tidy_sources EXCLUDE REGEX "^simulator/(device|installer)/|^tool/|^host/windows_|_windows\\.cpp$")
if(NOT tidy_sources OR NOT tidy_headers)
  message(FATAL_ERROR "no code was found to look at")
endif()

# clang cannot read g++'s precompiled headers: it gets the commands of a build without them.
set(database ${PROJECT_BINARY_DIR}/tidy/database)
file(GLOB_RECURSE build_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/host/CMakeLists.txt ${PROJECT_SOURCE_DIR}/simulator/CMakeLists.txt
  ${PROJECT_SOURCE_DIR}/format/CMakeLists.txt ${PROJECT_SOURCE_DIR}/tool/CMakeLists.txt ${PROJECT_SOURCE_DIR}/cmake/*.cmake)
add_custom_command(OUTPUT ${database}/compile_commands.json
  COMMAND ${CMAKE_COMMAND} -S ${PROJECT_SOURCE_DIR} -B ${database} -G ${CMAKE_GENERATOR} -D VQS_TESTS=OFF
    -D CMAKE_DISABLE_PRECOMPILE_HEADERS=ON -D CMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} >/dev/null
  DEPENDS ${build_files}
  COMMENT "Listing the commands for clang-tidy")

set(stamps)
function(vqs_tidy name file)
  set(stamp ${PROJECT_BINARY_DIR}/tidy/${name})
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${VQS_CLANG_TIDY} --quiet -p ${database} ${file}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${ARGN} ${tidy_headers_full} ${PROJECT_SOURCE_DIR}/.clang-tidy ${database}/compile_commands.json
    COMMENT "Looking at ${name}")
  set(stamps ${stamps} ${stamp} PARENT_SCOPE)
endfunction()

foreach(source IN LISTS tidy_sources)
  string(MAKE_C_IDENTIFIER ${source} name)
  vqs_tidy(${name} ${PROJECT_SOURCE_DIR}/${source} ${PROJECT_SOURCE_DIR}/${source})
endforeach()
# The tool is looked at in the piece that it is compiled in.
set(tool_sources ${code_sources})
list(FILTER tool_sources INCLUDE REGEX "^tool/")
list(TRANSFORM tool_sources PREPEND ${PROJECT_SOURCE_DIR}/)
vqs_tidy(tool ${database}/tool/CMakeFiles/vqs.dir/Unity/unity_0_cxx.cxx ${tool_sources})
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/tidy)
add_custom_target(tidy DEPENDS ${stamps})

vqs_add_check(style.format ${CMAKE_COMMAND} -E chdir ${PROJECT_SOURCE_DIR}
  ${VQS_CLANG_FORMAT} --dry-run --Werror ${code_headers} ${code_sources})
vqs_add_check(style.tidy ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target tidy)

# The longest of all, so it starts first.
set_tests_properties(${VQS_TEST_PREFIX}style.tidy PROPERTIES COST 1000)
