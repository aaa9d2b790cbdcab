# Reals are rounded after every operation and never fused; 32-bit x86 has to be told not to compute in more bits. What
# includes the library's inner headers needs the same, so that both choose the same instructions.
function(kord_arithmetic target)
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86|AMD64|i[3-6]86" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
  endif()
endfunction()
