# Elsewhere: the manual page, documents for an installation by hand, and what each Debian package has of its own.

function(vqs_gzip input output)
  add_custom_command(OUTPUT ${output}
    COMMAND gzip -9nc ${input} >${output}
    DEPENDS ${input}
    COMMENT "Compressing ${input}")
  list(APPEND vqs_packaging_files ${output})
  set(vqs_packaging_files ${vqs_packaging_files} PARENT_SCOPE)
endfunction()

vqs_gzip(${PROJECT_SOURCE_DIR}/docs/man/vqs.1 ${vqs_staged}/vqs.1.gz)
install(FILES ${vqs_staged}/vqs.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)

set(vqs_documents compatibility.md packages.md policy-binary.md simulator.md simulator-telemetry.md)
list(TRANSFORM vqs_documents PREPEND ${PROJECT_SOURCE_DIR}/docs/)
set(vqs_doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${VQS_PACKAGING}/third-party-notices.txt
  ${vqs_documents} DESTINATION ${vqs_doc_dir}/vexoqtfservices COMPONENT documentation)
set(vqs_sbom ${vqs_doc_dir}/vexoqtfservices/VexoQTFServices.spdx.json)

file(STRINGS ${VQS_PACKAGING}/debian/changelog vqs_changelog_top LIMIT_COUNT 1)
if(NOT vqs_changelog_top MATCHES "^vexoqtfservices \\(${PROJECT_VERSION}-([0-9]+)\\) ")
  message(FATAL_ERROR "packaging/debian/changelog does not begin with version ${PROJECT_VERSION}")
endif()
set(vqs_debian_revision ${CMAKE_MATCH_1})

vqs_gzip(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${vqs_staged}/changelog.gz)
vqs_gzip(${VQS_PACKAGING}/debian/changelog ${vqs_staged}/changelog.Debian.gz)
set(vqs_debian_library libvexoqtfservices${PROJECT_VERSION_MAJOR})
set(vqs_debian_development libvexoqtfservices-dev)
set(vqs_debian_tool vqs)
foreach(component library development tool)
  install(FILES ${VQS_PACKAGING}/debian/copyright ${vqs_staged}/changelog.gz ${vqs_staged}/changelog.Debian.gz
    DESTINATION ${vqs_doc_dir}/${vqs_debian_${component}} COMPONENT ${component} EXCLUDE_FROM_ALL)
  install(FILES ${VQS_PACKAGING}/debian/${component}.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides RENAME ${vqs_debian_${component}}
    COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
install(FILES ${vqs_documents} DESTINATION ${vqs_doc_dir}/${vqs_debian_development}
  COMPONENT development EXCLUDE_FROM_ALL)

# Below /usr the library is found without help, and Debian refuses programs that look elsewhere.
install(CODE [[
  if(CMAKE_INSTALL_PREFIX MATCHES "/usr$")
    file(RPATH_REMOVE FILE "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin/vqs")
  endif()
]] COMPONENT tool)
