# What `cmake --install` and `cpack` put where: docs/packages.md says it for users. Components: library, development,
# tool and simulator, and documentation, which is for the .zip and for an installation without packages.

include(CMakePackageConfigHelpers)

# Debian's own layout whatever the prefix: CMake would use it below /usr only.
if(CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version AND NOT CMAKE_CROSSCOMPILING)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Libraries, below the prefix")
endif()
include(GNUInstallDirs)

set(VQS_PACKAGING ${PROJECT_SOURCE_DIR}/packaging)
set(vqs_staged ${PROJECT_BINARY_DIR}/packaging)
set(vqs_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VexoQTFServices)
set(vqs_packaging_files)

install(TARGETS VexoQTFServices EXPORT VexoQTFServicesTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vqs DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.h")

if(TARGET vqs)
  if(NOT CMAKE_INSTALL_LIBDIR STREQUAL "lib")
    set_property(TARGET vqs APPEND PROPERTY INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
  endif()
  install(TARGETS vqs RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
endif()

# CMake and pkg-config packages, which find everything from where they are themselves.
install(EXPORT VexoQTFServicesTargets NAMESPACE VexoQTFServices:: DESTINATION ${vqs_config_dir} COMPONENT development)
configure_package_config_file(${VQS_PACKAGING}/VexoQTFServicesConfig.cmake.in
  ${vqs_staged}/VexoQTFServicesConfig.cmake INSTALL_DESTINATION ${vqs_config_dir})
write_basic_package_version_file(${vqs_staged}/VexoQTFServicesConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${vqs_staged}/VexoQTFServicesConfig.cmake ${vqs_staged}/VexoQTFServicesConfigVersion.cmake
  DESTINATION ${vqs_config_dir} COMPONENT development)
if(NOT MSVC)
  file(RELATIVE_PATH VQS_PREFIX_FROM_PKGCONFIG /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" VQS_PREFIX_FROM_PKGCONFIG ${VQS_PREFIX_FROM_PKGCONFIG})
  configure_file(${VQS_PACKAGING}/vexoqtfservices.pc.in ${vqs_staged}/vexoqtfservices.pc @ONLY)
  install(FILES ${vqs_staged}/vexoqtfservices.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endif()

if(WIN32)
  include(${VQS_PACKAGING}/windows.cmake)
else()
  include(${VQS_PACKAGING}/posix.cmake)
endif()
add_custom_target(packaging ALL DEPENDS ${vqs_packaging_files})

# Last of all, so that it sees every file that was installed.
include(${VQS_PACKAGING}/sbom.cmake)
include(${VQS_PACKAGING}/cpack.cmake)
