# The complex scalar routines in cpu type 5's unit are x87 code with no
# VEX-coded instruction, as the support set they call: the vector kernels
# around them are AVX code and must not have inlined and re-encoded them.
# Run as: cmake -DOBJECT=<the complex unit of cpu type 5> -DOBJDUMP=<objdump> -P check_scalar_routines.cmake
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn -C ${OBJECT} OUTPUT_VARIABLE out
                RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} failed on ${OBJECT}")
endif()
string(REPLACE ";" "," out "${out}")
string(REPLACE "\n\n" ";" functions "${out}")
set(seen 0)
set(bad "")
foreach(f IN LISTS functions)
  if(f MATCHES "<[^>]*(z[A-Za-z0-9]+_scalar|ext_[a-z0-9]+)[^>]*>:")
    math(EXPR seen "${seen} + 1")
    if(f MATCHES "\n *[0-9a-f]+:[ \t]+v[a-z0-9]+")
      list(APPEND bad "${CMAKE_MATCH_0}")
    endif()
  endif()
endforeach()
if(seen EQUAL 0)
  message(FATAL_ERROR "no scalar routine found in ${OBJECT}")
endif()
if(bad)
  message(FATAL_ERROR "VEX-coded instructions in scalar routines: ${bad}")
endif()
message(STATUS "${seen} scalar routines: no VEX")
