# crv_sources(HEADERS FILE... SOURCES FILE...): files of the library; HEADERS are installed.
#
# The headers are a file set, which CMake has from 3.23 on. Before, they are installed one by one, and no
# test compiles them one by one.
include(GNUInstallDirs)

function(crv_sources)
  cmake_parse_arguments(PARSE_ARGV 0 its "" "" "HEADERS;SOURCES")
  target_sources(CRV PRIVATE ${its_SOURCES})
  if(CMAKE_VERSION VERSION_GREATER_EQUAL 3.23)
    target_sources(CRV PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${its_HEADERS})
    return()
  endif()
  target_include_directories(CRV PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(CRV_INSTALL)
    foreach(header IN LISTS its_HEADERS)
      cmake_path(ABSOLUTE_PATH header OUTPUT_VARIABLE folder)
      cmake_path(GET folder PARENT_PATH folder)
      cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
      install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT Development)
    endforeach()
  endif()
endfunction()
