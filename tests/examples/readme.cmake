# The README and the site say what firstResult prints: cmake -DPROGRAM=... -DFOLDER=... -P readme.cmake
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)
foreach(page README.md website/index.md)
  file(READ ${FOLDER}/${page} text)
  string(FIND "${text}" "`${output}`" place)
  if(output STREQUAL "" OR place EQUAL -1)
    message(FATAL_ERROR "${page} does not say: ${output}")
  endif()
endforeach()
