# crv_target(TARGET): what every target of ours is compiled with: language, arithmetic, warnings,
# sanitizers.
include(CrvWarnings)

function(crv_target target)
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 17
    CXX_STANDARD_REQUIRED ON
    CXX_EXTENSIONS OFF)

  # The same bits from every compiler at every optimisation level: no fused multiply-add, and no
  # pow(x, 2) folded into x*x by the optimiser alone. errno and floating-point traps are not looked
  # at: without them square roots and choices can be made in vectors, with the same bits.
  if(MSVC)
    target_compile_options(${target} PRIVATE /fp:precise)
  else()
    target_compile_options(${target} PRIVATE
      -ffp-contract=off -fno-builtin-pow -fno-math-errno -fno-trapping-math)
  endif()

  crv_warnings(${target})

  if(CRV_SANITIZE)
    list(JOIN CRV_SANITIZE "," sanitizers)
    set(flags -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(${target} PRIVATE ${flags})
    target_link_options(${target} PRIVATE ${flags})
    # gcc's -Wmaybe-uninitialized misjudges instrumented code, that of <regex> for one.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  endif()
endfunction()
