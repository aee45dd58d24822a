# Runs the programs of examples/cmake-package built in DIR: the one linked
# with the shared library starts each thread in HA with its error actions
# (the library case), the static one at mode 0 (the program case).
# cmake -DDIR=<build folder> -P run_package_consumer.cmake
foreach(case "quickstart|0x1a02" "quickstart_static|0x0\n")
  string(REPLACE "|" ";" case "${case}")
  list(GET case 0 program)
  list(GET case 1 mode)
  if(NOT EXISTS ${DIR}/${program})
    message(FATAL_ERROR "${DIR}/${program} was not built")
  endif()
  execute_process(COMMAND ${DIR}/${program} OUTPUT_VARIABLE out ERROR_VARIABLE out
                  RESULT_VARIABLE rc)
  message(STATUS "${program}:\n${out}")
  if(NOT rc EQUAL 0 OR NOT out MATCHES "mode word at start: ${mode}")
    message(FATAL_ERROR "${program} exited with ${rc}, expected mode word ${mode} at start")
  endif()
endforeach()
