# cmake -DLINUX_PROGRAM=... -DWINDOWS_PROGRAM=... -DWINE=<wine-run.sh> -P compare_digests.cmake
# results_digest of the Linux build and of the Windows build print the same
# lines on every cpu type: for every function and mode, the same bits,
# status, errno value and flags of the call on one thread, and the same
# statuses reported by its elements. Each program checks its calls on the
# environment's threads itself.
if(NOT EXISTS "${LINUX_PROGRAM}")
  message("no Linux build to compare with: ${LINUX_PROGRAM} is missing")
  return()
endif()
set(failed "")
foreach(cpu RANGE 0 5)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ZVL_CPU_TYPE=${cpu} ${LINUX_PROGRAM}
                  OUTPUT_VARIABLE linux RESULT_VARIABLE rc_linux)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ZVL_CPU_TYPE=${cpu} ${WINE} ${WINDOWS_PROGRAM}
                  OUTPUT_VARIABLE windows RESULT_VARIABLE rc_windows)
  string(REPLACE "\r" "" windows "${windows}")
  if(NOT rc_linux EQUAL 0 OR NOT rc_windows EQUAL 0)
    message(SEND_ERROR "cpu type ${cpu}: exit codes ${rc_linux} (Linux), ${rc_windows} (Windows)")
    list(APPEND failed ${cpu})
    continue()
  endif()
  if(NOT linux STREQUAL windows)
    string(REPLACE "\n" ";" linux_lines "${linux}")
    string(REPLACE "\n" ";" windows_lines "${windows}")
    set(only_windows ${windows_lines})
    list(REMOVE_ITEM only_windows ${linux_lines})
    set(only_linux ${linux_lines})
    list(REMOVE_ITEM only_linux ${windows_lines})
    list(JOIN only_linux "\n  " a)
    list(JOIN only_windows "\n  " b)
    message(SEND_ERROR "cpu type ${cpu} differs\nLinux:\n  ${a}\nWindows:\n  ${b}")
    list(APPEND failed ${cpu})
  else()
    string(REGEX MATCHALL "\n" lines "${linux}")
    list(LENGTH lines n)
    message(STATUS "cpu type ${cpu}: ${n} lines alike")
  endif()
endforeach()
if(failed)
  message(FATAL_ERROR "the Windows build computes differently on cpu types ${failed}")
endif()
