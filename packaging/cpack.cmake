# Packages: three .deb files, or one .zip and another with the debug information of its programs.

set(CPACK_PACKAGE_NAME VexoQTFServices)
set(CPACK_PACKAGE_VENDOR "VexoQTF Services contributors")
# Each .deb has a summary of its own: the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_THREADS 0)
set(CPACK_SOURCE_GENERATOR "")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME VexoQTFServices-${PROJECT_VERSION}-windows-x64)
  configure_file(${VQS_PACKAGING}/pack_symbols.cmake.in ${vqs_staged}/pack_symbols.cmake @ONLY)
  set(CPACK_POST_BUILD_SCRIPTS ${vqs_staged}/pack_symbols.cmake)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_STRIP_FILES ON)
  set(CPACK_COMPONENTS_ALL library development tool)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_RELEASE ${vqs_debian_revision})
  set(CPACK_DEBIAN_PACKAGE_MAINTAINER "VexoQTF Services contributors <contributors@vexoqtf-services.invalid>")
  set(CPACK_DEBIAN_PACKAGE_SOURCE vexoqtfservices)
  set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
  set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
  set(vqs_needs_library "${vqs_debian_library} (= ${PROJECT_VERSION}-${vqs_debian_revision})")

  set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${vqs_debian_library})
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
  set(vqs_soname "libVexoQTFServices ${PROJECT_VERSION_MAJOR}")
  file(WRITE ${vqs_staged}/shlibs "${vqs_soname} ${vqs_debian_library} (>= ${PROJECT_VERSION})\n")
  file(WRITE ${vqs_staged}/triggers "activate-noawait ldconfig\n")
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${vqs_staged}/shlibs ${vqs_staged}/triggers)
  string(CONCAT CPACK_COMPONENT_LIBRARY_DESCRIPTION
    "client library for the VexoQTF power-management driver\n"
    "Hands power policies to the driver and reads them back, and writes and reads\n"
    "policy binary files. Here it brings a simulated driver along, in process.")

  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${vqs_debian_development})
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${vqs_needs_library})
  string(CONCAT CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "client library for the VexoQTF power-management driver - development files\n"
    "Headers for C and C++, packages for CMake and pkg-config, and descriptions of\n"
    "the policy binary format and of the simulated driver.")

  set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ${vqs_debian_tool})
  set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS ${vqs_needs_library})
  set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
  string(CONCAT CPACK_COMPONENT_TOOL_DESCRIPTION
    "command line tool for the VexoQTF power-management driver\n"
    "Shows policy binary files, and takes policies to the driver's stores and back.")
endif()
include(CPack)
