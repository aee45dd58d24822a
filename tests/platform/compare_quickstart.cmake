# cmake -DLINUX_PROGRAM=... -DWINDOWS_PROGRAM=... -DWINE=<wine-run.sh>
#       -DCATALOGUE_DIR=<dir with zel_msg.cat and 1033/zel_msg.dll> -P compare_quickstart.cmake
# The same C program, built for Linux and for Windows against each build's
# library, prints the same text: results, statuses, errno values, messages,
# the default mode word, and the texts of the message catalogue when one is
# installed.
if(NOT EXISTS "${LINUX_PROGRAM}")
  message("no Linux build to compare with: ${LINUX_PROGRAM} is missing")
  return()
endif()

# run(<out-var> <catalogue: ON|OFF> <command...>): standard output of the
# program, carriage returns dropped; fails on a non-zero exit.
function(run out catalogue)
  if(catalogue)
    set(dir ${CATALOGUE_DIR})
  else()
    get_filename_component(dir ${WINDOWS_PROGRAM} DIRECTORY)  # holds no catalogue
  endif()
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${dir}
                  OUTPUT_VARIABLE text ERROR_VARIABLE err RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${ARGN} exited with ${rc}:\n${text}\n${err}")
  endif()
  string(REPLACE "\r" "" text "${text}")
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

set(failed FALSE)
foreach(catalogue OFF ON)
  if(catalogue)
    set(linux_env NLSPATH=${CATALOGUE_DIR}/%N.cat)
    set(windows_env LC_ALL=C)  # thread locale 1033
  else()
    set(linux_env --unset=NLSPATH)
    set(windows_env --unset=LC_ALL)
  endif()
  run(linux ${catalogue} ${CMAKE_COMMAND} -E env ${linux_env} ${LINUX_PROGRAM})
  run(windows ${catalogue} ${CMAKE_COMMAND} -E env ${windows_env} ${WINE} ${WINDOWS_PROGRAM})
  if(NOT linux STREQUAL windows)
    message(SEND_ERROR "catalogue ${catalogue}: outputs differ\n--- Linux\n${linux}--- Windows\n${windows}")
    set(failed TRUE)
  endif()
  if(NOT windows MATCHES "mode word at start: 0x1a02\n")
    message(SEND_ERROR "catalogue ${catalogue}: the mode word did not start at 0x1a02\n${windows}")
    set(failed TRUE)
  endif()
  string(FIND "${windows}" "TEST CATALOGUE" at)
  if(catalogue AND at EQUAL -1)
    message(SEND_ERROR "the catalogue's texts were not used\n${windows}")
    set(failed TRUE)
  elseif(NOT catalogue AND NOT at EQUAL -1)
    message(SEND_ERROR "catalogue texts without a catalogue\n${windows}")
    set(failed TRUE)
  endif()
  set(output_${catalogue} "${windows}")
endforeach()
if(failed)
  message(FATAL_ERROR "the Windows build differs from the Linux build")
endif()
message(STATUS "Linux and Windows print alike, with and without the catalogue:\n${output_ON}")
