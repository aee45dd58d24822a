cmake_minimum_required(VERSION 3.25)
# Writes OUT, a header naming the commit the build was made from, at every
# build; the file changes (and zvl-report is recompiled) only when the
# commit or the tree's state does.
# cmake -DSOURCE_DIR=<tree> -DOUT=<header> -P build_info.cmake
execute_process(COMMAND git -C ${SOURCE_DIR} describe --always --dirty --abbrev=12
                OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE
                RESULT_VARIABLE rc ERROR_QUIET)
if(NOT rc EQUAL 0 OR commit STREQUAL "")
  set(commit "unknown")
endif()
file(CONFIGURE OUTPUT ${OUT} CONTENT "#define ZVL_BUILD_COMMIT \"${commit}\"\n")
