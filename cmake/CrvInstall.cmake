# Installs the library, its public headers, and what finds it: CMake's and pkg-config's packages.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/CRV)
if(CMAKE_VERSION VERSION_GREATER_EQUAL 3.23)  # else crv_sources installs them
  set(headers FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
endif()
install(TARGETS CRV EXPORT CRV
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
  ${headers})

# CRV depends on nothing, so the exported targets are the whole package.
install(EXPORT CRV NAMESPACE CRV:: FILE CRVConfig.cmake DESTINATION ${package_dir}
  COMPONENT Development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CRVConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/CRVConfigVersion.cmake DESTINATION ${package_dir}
  COMPONENT Development)

# The prefix is told from the place of the .pc file, so an installed tree can be moved.
file(RELATIVE_PATH CRV_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" CRV_PC_PREFIX "${CRV_PC_PREFIX}")
if(NOT BUILD_SHARED_LIBS)
  set(CRV_PC_DEFINES " -DCRV_STATIC")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/CRV.pc.in ${PROJECT_BINARY_DIR}/CRV.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/CRV.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Development)

# How debuggers show CRV's values. gdb looks for its file by the place of the library, below /usr, or
# below the prefix when told so; the prefix is known when the library is installed.
if(UNIX AND NOT APPLE AND BUILD_SHARED_LIBS)
  install(CODE "
    set(auto_load share/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR})
    file(INSTALL DESTINATION \${CMAKE_INSTALL_PREFIX}/\${auto_load} TYPE FILE
      RENAME libCRV.so.${PROJECT_VERSION}-gdb.py FILES ${PROJECT_SOURCE_DIR}/debugging/crv_gdb.py)" COMPONENT Runtime)
endif()
install(FILES debugging/crv_lldb.py debugging/crv.natvis DESTINATION ${CMAKE_INSTALL_DATADIR}/CRV
  COMPONENT Development)
