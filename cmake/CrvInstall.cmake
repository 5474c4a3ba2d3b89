# Installs the library, its public headers, and what finds it: CMake's and pkg-config's packages.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/CRV)
install(TARGETS CRV EXPORT CRV
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# CRV depends on nothing, so the exported targets are the whole package.
install(EXPORT CRV NAMESPACE CRV:: FILE CRVConfig.cmake DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CRVConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/CRVConfigVersion.cmake DESTINATION ${package_dir})

# The prefix is told from the place of the .pc file, so an installed tree can be moved.
file(RELATIVE_PATH CRV_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" CRV_PC_PREFIX "${CRV_PC_PREFIX}")
if(NOT BUILD_SHARED_LIBS)
  set(CRV_PC_DEFINES " -DCRV_STATIC")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/CRV.pc.in ${PROJECT_BINARY_DIR}/CRV.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/CRV.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
