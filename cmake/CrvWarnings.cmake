# crv_warnings(TARGET): the warning list, for our own targets only, never for callers.
# Not -Wfloat-equal: exact comparisons are deliberate in this library, and commented.
function(crv_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${CRV_WERROR}>:/WX>)
    return()
  endif()
  # clang counts -Wsign-conversion into -Wconversion; named here so that gcc says the same.
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    $<$<BOOL:${CRV_WERROR}>:-Werror>)
endfunction()
