# For Windows: the import library of Microsoft's linker, documents at the top, the simulated driver.

foreach(document "LICENSE>LICENSE.txt" "CHANGELOG.md>CHANGELOG.md"
    "packaging/third-party-notices.txt>THIRD-PARTY-NOTICES.txt")
  string(REPLACE ">" ";" names ${document})
  list(GET names 0 source)
  list(GET names 1 name)
  install(FILES ${PROJECT_SOURCE_DIR}/${source} DESTINATION . RENAME ${name} COMPONENT documentation)
endforeach()
foreach(document compatibility.md packages.md policy-binary.md simulator.md simulator-telemetry.md windows-checklist.md)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/${document} DESTINATION doc COMPONENT documentation)
endforeach()
set(vqs_sbom VexoQTFServices.spdx.json)

# Debug information, for an archive of its own: few need it, and it is larger than everything else.
function(vqs_install_symbols target destination)
  if(MSVC)
    set(symbols $<TARGET_PDB_FILE:${target}>)
  else()
    set(symbols $<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb)
  endif()
  install(FILES ${symbols} DESTINATION ${destination} COMPONENT symbols EXCLUDE_FROM_ALL)
endfunction()
vqs_install_symbols(VexoQTFServices ${CMAKE_INSTALL_BINDIR})
if(TARGET vqs)
  vqs_install_symbols(vqs ${CMAKE_INSTALL_BINDIR})
endif()

if(TARGET VexoQTFServicesSimulated)
  install(TARGETS VexoQTFServicesSimulated RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}/simulated COMPONENT simulator)
  vqs_install_symbols(VexoQTFServicesSimulated ${CMAKE_INSTALL_BINDIR}/simulated)
endif()
if(TARGET vexoqtf AND TARGET vqs-simulator)
  vqs_install_symbols(vqs-simulator simulator)
  install(PROGRAMS $<TARGET_FILE:vexoqtf> DESTINATION simulator COMPONENT simulator)
  install(FILES $<TARGET_FILE_DIR:vexoqtf>/vexoqtf.inf DESTINATION simulator COMPONENT simulator)
  install(PROGRAMS $<TARGET_FILE:vqs-simulator> DESTINATION simulator COMPONENT simulator)
endif()

# link.exe reads GNU import libraries badly; LLVM writes the short import format that Microsoft's own tools write.
if(MINGW)
  find_program(VQS_DLLTOOL NAMES llvm-dlltool-19 llvm-dlltool)
  if(NOT VQS_DLLTOOL)
    message(WARNING "llvm-dlltool is missing, so there will be no VexoQTFServices.lib: run scripts/install-packages.sh test")
    return()
  endif()
  set(vqs_exports ${PROJECT_SOURCE_DIR}/src/windows/exports.def)
  set(vqs_import_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/VexoQTFServices.lib)
  add_custom_command(OUTPUT ${vqs_import_library}
    COMMAND ${VQS_DLLTOOL} -m i386:x86-64 -D VexoQTFServices.dll -d ${vqs_exports} -l ${vqs_import_library}
    DEPENDS ${vqs_exports}
    COMMENT "Making VexoQTFServices.lib" VERBATIM)
  list(APPEND vqs_packaging_files ${vqs_import_library})
  install(FILES ${vqs_import_library} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endif()
