# The targets format, format-check and tidy, each where its tool is found.
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
