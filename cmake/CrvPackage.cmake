# Debian packages by CPack, from a build of type Release with shared libraries and the prefix /usr:
#   cpack --config build/package/CPackConfig.cmake  
# libcrvX.Y holds the library, libcrv-dev what programs are built with, and libcrvX.Y-dbgsym the debug
# information.
set(runtime libcrv${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME crv)
set(CPACK_PACKAGE_CONTACT "CRV maintainers <maintainers@crv.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_ALL Runtime Development Debug)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_STRIP_FILES ON)
file(GLOB licence ${PROJECT_SOURCE_DIR}/LICENSES/*.txt)
if(licence)
  set(CPACK_RESOURCE_FILE_LICENSE ${licence})
endif()

set(description "A C++ library that fits, flattens, measures, crosses, offsets and edits
curves made of cubic Bezier segments, and carries positions through every
edit.\n.\nThis package holds")
function(crv_component component package section holds)
  string(TOUPPER ${component} name)
  set(CPACK_DEBIAN_${name}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${name}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${name}_DESCRIPTION "${description} ${holds}" PARENT_SCOPE)
endfunction()
crv_component(Runtime ${runtime} libs "the shared library.")
crv_component(Development libcrv-dev libdevel
  "headers, and what CMake and pkg-config find them by.")
crv_component(Debug ${runtime}-dbgsym debug "the debug information of the shared library.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/debian/shlibs ${PROJECT_BINARY_DIR}/debian/triggers)
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs
  "libCRV ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} ${runtime} (>= ${PROJECT_VERSION})\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
foreach(name DEVELOPMENT DEBUG)
  set(CPACK_DEBIAN_${name}_PACKAGE_DEPENDS "${runtime} (= ${PROJECT_VERSION}-1)")
endforeach()

# The debug information of the library, under its build identifier, where debuggers look for it. It is
# part of no other installation.
install(CODE "
  execute_process(COMMAND readelf -n \"$<TARGET_FILE:CRV>\" OUTPUT_VARIABLE notes
    COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH \"Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)\" id \"\${notes}\")
  set(folder \"\$ENV{DESTDIR}/usr/lib/debug/.build-id/\${CMAKE_MATCH_1}\")
  file(MAKE_DIRECTORY \"\${folder}\")
  execute_process(COMMAND objcopy --only-keep-debug --compress-debug-sections \"$<TARGET_FILE:CRV>\"
    \"\${folder}/\${CMAKE_MATCH_2}.debug\" COMMAND_ERROR_IS_FATAL ANY)
  file(CHMOD \"\${folder}/\${CMAKE_MATCH_2}.debug\" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)"
  COMPONENT Debug EXCLUDE_FROM_ALL)

# The command crv is a package of its own, where it is built.
set(tools)
if(CRV_BUILD_TOOL)
  set(tools "Tools crv-tools")
  list(APPEND CPACK_COMPONENTS_ALL Tools)
  crv_component(Tools crv-tools graphics "the command crv.")
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
    "${runtime} (= ${PROJECT_VERSION}-1), libc6, libstdc++6 (>= 12), libpugixml1v5")
endif()

# Each package has a changelog and a copyright file, as Debian wants it. They are part of no other
# installation.
set(documents ${PROJECT_BINARY_DIR}/documents)
file(WRITE ${documents}/changelog "libcrv (${PROJECT_VERSION}-1) unstable; urgency=medium

  * See CHANGELOG.md of the source.

 -- ${CPACK_PACKAGE_CONTACT}  Sun, 22 Nov 2026 00:00:00 +0000
")
file(COPY_FILE ${PROJECT_SOURCE_DIR}/packaging/debian/copyright ${documents}/copyright)
execute_process(COMMAND gzip -9nf changelog WORKING_DIRECTORY ${documents} COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${documents}/changelog.gz ${documents}/changelog.Debian.gz)
foreach(pair "Runtime ${runtime}" "Development libcrv-dev" "Debug ${runtime}-dbgsym" ${tools})
  separate_arguments(pair UNIX_COMMAND "${pair}")
  list(GET pair 0 component)
  list(GET pair 1 package)
  install(FILES ${documents}/changelog.Debian.gz ${documents}/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
include(CPack)
