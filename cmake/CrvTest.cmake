# crv_add_tests(PROGRAM FOLDER): one test program from FOLDER/*_test.cpp, found test by test.
#
# The sources are globbed, here only: several people add test files at once, and a test that was
# forgotten in a list would pass unseen. The library's own sources are listed by name.
# A folder without tests makes no program. Tests run in the project's folder and find their data there.
include(CrvTarget)
include(GoogleTest)

function(crv_add_tests program folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*_test.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${program} ${sources})
  crv_target(${program})
  target_link_libraries(${program} PRIVATE CRV::CRV GTest::gtest_main)
  gtest_discover_tests(${program}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    TEST_PREFIX "${CRV_TEST_PREFIX}"
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 600)
endfunction()
