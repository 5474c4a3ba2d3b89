file(REMOVE_RECURSE ${prefix})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${prefix} --config ${config}
  COMMAND_ERROR_IS_FATAL ANY)
