# The targets format, format-check, tidy and reference, each where its tool is found.
find_program(CRV_CLANG_FORMAT clang-format)
find_program(CRV_RUN_CLANG_TIDY NAMES run-clang-tidy run-clang-tidy-14)
mark_as_advanced(CRV_CLANG_FORMAT CRV_RUN_CLANG_TIDY)

set(ours "*.h" "*.cpp")
if(CRV_CLANG_FORMAT)
  add_custom_target(format VERBATIM WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMAND sh -c "git ls-files -z -- \"$@\" | xargs -0 \"$0\" -i" ${CRV_CLANG_FORMAT} ${ours})
  add_custom_target(format-check VERBATIM WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMAND sh -c "git ls-files -z -- \"$@\" | xargs -0 \"$0\" --dry-run --Werror"
      ${CRV_CLANG_FORMAT} ${ours})
endif()
if(CRV_RUN_CLANG_TIDY)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  add_custom_target(tidy VERBATIM WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMAND ${CRV_RUN_CLANG_TIDY} -quiet -p ${PROJECT_BINARY_DIR}
      "^${PROJECT_SOURCE_DIR}/(crv|tests|benchmarks|examples)/")
endif()

# HTML pages of all public declarations; a public name without a comment is an error.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  set(DOXYGEN_EXCLUDE_PATTERNS */internal/* *.cpp)
  set(DOXYGEN_INPUT_FILTER "awk -f ${PROJECT_SOURCE_DIR}/docs/reference.awk")
  set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
  set(DOXYGEN_MACRO_EXPANSION YES)
  set(DOXYGEN_PREDEFINED CRV_API=)
  set(DOXYGEN_SORT_MEMBER_DOCS NO)
  set(DOXYGEN_SUBGROUPING NO)
  set(DOXYGEN_QUIET YES)
  set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
  doxygen_add_docs(reference crv COMMENT "Writing ${PROJECT_BINARY_DIR}/html")
endif()
