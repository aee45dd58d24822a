# The processor vendor whose processors get cpu types 1 to 5. By default the
# vendor of the processor that configures the build, read with cpuid by a
# small program built and run with the host's C compiler; so a library built
# from source runs the kernel set of the processor it is built on. A
# cross-build (the Windows DLL) takes the same default from the host.
# -DZVL_CPU_VENDOR=... fixes it; the value, once in the cache, stays.
#
# ZVL_CONFIGURING_CPU_VENDOR holds what the configuring processor reported
# (empty when it could not be read), for the CI step that builds for the
# other case.

function(zvl_read_cpu_vendor out)
  set(${out} "" PARENT_SCOPE)
  if(CMAKE_CROSSCOMPILING)
    find_program(ZVL_HOST_CC NAMES cc gcc clang)
    set(cc "${ZVL_HOST_CC}")
  else()
    set(cc "${CMAKE_C_COMPILER}")
  endif()
  if(NOT cc)
    return()
  endif()
  set(program ${CMAKE_BINARY_DIR}/CMakeFiles/zvl_cpu_vendor)
  execute_process(COMMAND ${cc} -o ${program} ${CMAKE_CURRENT_LIST_DIR}/cpu_vendor.c
                  RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET)
  if(NOT rc EQUAL 0)
    return()
  endif()
  execute_process(COMMAND ${program} RESULT_VARIABLE rc OUTPUT_VARIABLE vendor ERROR_QUIET)
  string(LENGTH "${vendor}" len)
  if(rc EQUAL 0 AND len EQUAL 12)
    set(${out} "${vendor}" PARENT_SCOPE)
  endif()
endfunction()

if(NOT DEFINED ZVL_CONFIGURING_CPU_VENDOR)
  zvl_read_cpu_vendor(_zvl_vendor)
  set(ZVL_CONFIGURING_CPU_VENDOR "${_zvl_vendor}" CACHE INTERNAL
      "Vendor identification of the processor that configured this build")
endif()

if(NOT DEFINED CACHE{ZVL_CPU_VENDOR})
  if(ZVL_CONFIGURING_CPU_VENDOR)
    set(_zvl_vendor "${ZVL_CONFIGURING_CPU_VENDOR}")
  else()
    set(_zvl_vendor "AuthenticAMD")
    message(WARNING "cannot read this processor's vendor identification; "
                    "building for ${_zvl_vendor} (set ZVL_CPU_VENDOR to choose)")
  endif()
  set(ZVL_CPU_VENDOR "${_zvl_vendor}" CACHE STRING
      "Processor vendor identification whose processors get cpu types 1 to 5 (12 characters); default: the configuring processor's")
endif()

string(LENGTH "${ZVL_CPU_VENDOR}" _zvl_vendor_len)
if(NOT _zvl_vendor_len EQUAL 12)
  message(FATAL_ERROR "ZVL_CPU_VENDOR must be 12 characters, got '${ZVL_CPU_VENDOR}'")
endif()
if(ZVL_CONFIGURING_CPU_VENDOR AND NOT ZVL_CPU_VENDOR STREQUAL ZVL_CONFIGURING_CPU_VENDOR)
  message(STATUS "Kernel sets for ${ZVL_CPU_VENDOR} processors; this ${ZVL_CONFIGURING_CPU_VENDOR} "
                 "processor gets the baseline kernels of cpu type 0")
else()
  message(STATUS "Kernel sets for ${ZVL_CPU_VENDOR} processors")
endif()
