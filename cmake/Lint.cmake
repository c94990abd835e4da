# clang-format and clang-tidy as tests of this build. A file is looked at again only when it, a header or the rules
# have changed.

find_program(VQS_CLANG_FORMAT NAMES clang-format-14 REQUIRED)
find_program(VQS_CLANG_TIDY NAMES clang-tidy-14 REQUIRED)

set(code_folders bench examples fuzz host include simulator src tests tools)
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
list(FILTER tidy_headers INCLUDE REGEX "^(include|src|host|simulator|tools)/")
set(tidy_sources ${code_sources})
list(FILTER tidy_sources INCLUDE REGEX "^(src|host|simulator|tools)/")
list(FILTER tidy_sources EXCLUDE REGEX "_windows\\.cpp$|^simulator/device/")
set(stamps)
foreach(source IN LISTS tidy_sources)
  string(MAKE_C_IDENTIFIER ${source} name)
  set(stamp ${PROJECT_BINARY_DIR}/tidy/${name})
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${VQS_CLANG_TIDY} --quiet -p ${PROJECT_BINARY_DIR} ${PROJECT_SOURCE_DIR}/${source}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${source} ${tidy_headers} .clang-tidy
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Looking at ${source}")
  list(APPEND stamps ${stamp})
endforeach()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/tidy)
add_custom_target(tidy DEPENDS ${stamps})

vqs_add_check(style.format ${CMAKE_COMMAND} -E chdir ${PROJECT_SOURCE_DIR}
  ${VQS_CLANG_FORMAT} --dry-run --Werror ${code_headers} ${code_sources})
vqs_add_check(style.tidy ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target tidy)
