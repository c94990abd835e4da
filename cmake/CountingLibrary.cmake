# The library with its simulated driver, made to count requests (tests/support/counting_library.cpp). It goes by the
# library's name, so that programs of the build take it from LD_LIBRARY_PATH instead.
function(vqs_add_counting_library target folder)
  add_library(${target} SHARED ${PROJECT_SOURCE_DIR}/tests/support/counting_library.cpp)
  target_link_libraries(${target} PRIVATE vqs_options vqs_no_exceptions
    "$<LINK_LIBRARY:WHOLE_ARCHIVE,vqs_core>" "$<LINK_LIBRARY:WHOLE_ARCHIVE,vqs_simulator_embedded>")
  target_link_options(${target} PRIVATE -Wl,--version-script=${PROJECT_BINARY_DIR}/src/exports.map)
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME VexoQTFServices SOVERSION ${PROJECT_VERSION_MAJOR} LIBRARY_OUTPUT_DIRECTORY ${folder})
endfunction()
