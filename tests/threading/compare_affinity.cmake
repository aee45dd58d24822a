# cmake -DPROGRAM=<affinity_view> -P compare_affinity.cmake
# The library's view of the machine (thread counts, core count, package
# walk, thresholds at cpu type 4) is the same whether or not the OpenMP
# runtime binds its threads to places, which pins the main thread before the
# library loads; and a process that taskset restricts to one processor
# counts one core and the walk's 2, 2, 2 (vdExp from 714 elements).
find_program(TASKSET taskset)
file(STRINGS /proc/self/status allowed REGEX "^Cpus_allowed_list:")
string(REGEX MATCH "[0-9]+" first_cpu "${allowed}")
cmake_host_system_information(RESULT procs QUERY NUMBER_OF_LOGICAL_CORES)
if(NOT TASKSET OR first_cpu STREQUAL "" OR procs LESS 2)
  message("skipped: needs taskset and two processors")
  return()
endif()

function(view out)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ZVL_CPU_TYPE=4 ${ARGN} ${PROGRAM}
                  OUTPUT_VARIABLE text RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${ARGN} ${PROGRAM} exited with ${rc}")
  endif()
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

view(free)
message(STATUS "unpinned:\n${free}")
set(failed FALSE)
foreach(bind "OMP_PROC_BIND=true;OMP_PLACES=cores" "OMP_PROC_BIND=true;OMP_PLACES=threads"
             "OMP_PROC_BIND=spread")
  view(bound ${bind})
  if(NOT bound STREQUAL free)
    message(SEND_ERROR "with ${bind}:\n${bound}")
    set(failed TRUE)
  endif()
endforeach()

view(one ${TASKSET} -c ${first_cpu})
message(STATUS "taskset -c ${first_cpu}:\n${one}")
foreach(line "physical cores 1\n" "walk 2 2 2\n" "vdExp from 714\n")
  string(FIND "${one}" "${line}" at)
  if(at EQUAL -1)
    message(SEND_ERROR "restricted to one processor, no line '${line}'")
    set(failed TRUE)
  endif()
endforeach()
if(failed)
  message(FATAL_ERROR "the library's view depends on how the process is pinned")
endif()
