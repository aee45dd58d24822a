# Builds TARGET of the Makefile MAKEFILE in the folder DIR, then runs it.
# cmake -DMAKEFILE=<file> -DDIR=<folder> -DTARGET=<program> -P make_and_run.cmake
file(MAKE_DIRECTORY ${DIR})
find_program(MAKE_PROGRAM NAMES make gmake REQUIRED)
execute_process(COMMAND ${MAKE_PROGRAM} -B -f ${MAKEFILE} ${TARGET} WORKING_DIRECTORY ${DIR}
                RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "make ${TARGET} failed")
endif()
execute_process(COMMAND ${DIR}/${TARGET} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${TARGET} exited with ${rc}")
endif()
