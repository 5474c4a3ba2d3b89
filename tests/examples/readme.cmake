# The README says what firstResult prints: cmake -DPROGRAM=... -DREADME=... -P readme.cmake
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)
file(READ ${README} readme)
string(FIND "${readme}" "`${output}`" place)
if(output STREQUAL "" OR place EQUAL -1)
  message(FATAL_ERROR "the README does not say: ${output}")
endif()
