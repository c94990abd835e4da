# The DLL, and on the cross build the one that brings its driver along.
enable_language(RC)

# What a DLL has beside its core. Its version resource has the flags, and says what is special about the build, if
# anything is.
function(vqs_windows_library target core flags special_build)
  set(VQS_SPECIAL_BUILD)
  set(VQS_DESCRIPTION_REMARK)
  if(special_build)
    set(VQS_DESCRIPTION_REMARK ", ${special_build}")
    set(VQS_SPECIAL_BUILD "\n      VALUE \"SpecialBuild\", \"${special_build}\"")
  endif()
  set(VQS_FILE_FLAGS ${flags})
  configure_file(windows/version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${exports} ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  target_link_libraries(${target} PRIVATE ${core})
  set_target_properties(${target} PROPERTIES PREFIX "")
  vqs_windows_image(${target} 0x800)
  if(MINGW)
    # The universal C runtime, which the programs of every Windows from 10 on share. The DLL needs no C++ library.
    target_link_options(${target} PRIVATE -nostdlib++ -Wl,--gc-sections)
    target_link_libraries(${target} PRIVATE ucrt)
  endif()
endfunction()

# Code of the DLLs.
function(vqs_use_universal_runtime target)
  target_compile_definitions(${target} PRIVATE _UCRT __MSVCRT_VERSION__=0xE00)
  target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
endfunction()

target_link_libraries(vqs_core PUBLIC cfgmgr32 version)
vqs_windows_library(VexoQTFServices vqs_core 0 "")

if(MINGW)
  vqs_use_universal_runtime(vqs_core)

  # Applications are developed with it where there is no driver: the same exports, the same bytes to and from a device
  # that is the simulated driver in the process.
  vqs_add_core(vqs_core_simulated)
  target_compile_definitions(vqs_core_simulated PRIVATE VQS_SIMULATED_DEVICES)
  target_link_libraries(vqs_core_simulated PUBLIC vqs_host)
  # Whole, though nothing refers to it.
  add_library(VexoQTFServicesSimulated SHARED windows/library.cpp $<TARGET_OBJECTS:vqs_simulator_embedded>)
  target_link_libraries(VexoQTFServicesSimulated PRIVATE
    vqs_simulator_model vqs_host vqs_options vqs_no_exceptions)
  vqs_windows_library(VexoQTFServicesSimulated vqs_core_simulated VS_FF_SPECIALBUILD "simulated driver in the process")
  foreach(target vqs_core_simulated vqs_host vqs_simulator_embedded)
    vqs_use_universal_runtime(${target})
  endforeach()
  set_target_properties(VexoQTFServicesSimulated PROPERTIES
    OUTPUT_NAME VexoQTFServices
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/simulated
    # Programs link the import library of the other one.
    ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/unused)
endif()
