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
  if(MSVC AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(${target} PRIVATE /fp:precise /clang:-ffp-contract=off)
  elseif(MSVC)
    # Before Visual Studio 2022 the precise model allowed fused multiply-add.
    target_compile_options(${target} PRIVATE
      $<IF:$<VERSION_LESS:$<CXX_COMPILER_VERSION>,19.30>,/fp:strict,/fp:precise> /utf-8)
  else()
    target_compile_options(${target} PRIVATE
      -ffp-contract=off -fno-builtin-pow -fno-math-errno -fno-trapping-math)
  endif()

  # No extended precision: not the registers of the first x86 processors.
  # Emscripten calls its processor x86, too, but has no such registers.
  if(NOT MSVC AND NOT EMSCRIPTEN AND CMAKE_SIZEOF_VOID_P EQUAL 4
      AND CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
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
