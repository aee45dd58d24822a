# Runs a generator into the build tree and compares its output with the
# checked-in file, byte for byte:
#   cmake -DGEN=<program> -DARGS=<arguments> -DOUT=<file> -DREF=<file> -P check_generated.cmake
separate_arguments(args UNIX_COMMAND "${ARGS}")
execute_process(COMMAND ${GEN} ${args} OUTPUT_FILE ${OUT} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${GEN} ${ARGS} failed: ${rc}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT} ${REF} RESULT_VARIABLE diff)
if(NOT diff EQUAL 0)
  message(FATAL_ERROR "${REF} differs from what ${GEN} ${ARGS} writes (${OUT})")
endif()
