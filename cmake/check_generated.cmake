# Reruns a table generator and compares its output with the checked-in file,
# byte for byte. Used as a test:
#   cmake -DGEN=<program> -DARGS=<args;...> -DOUT=<file> -DREF=<file> -P check_generated.cmake
execute_process(COMMAND ${GEN} ${ARGS} OUTPUT_FILE ${OUT} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${GEN} ${ARGS} failed: ${rc}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT} ${REF} RESULT_VARIABLE differ)
if(differ)
  message(FATAL_ERROR "${REF} differs from what ${GEN} ${ARGS} writes now (${OUT})")
endif()
