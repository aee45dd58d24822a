# Windows builds with MinGW-w64: the compiler's runtime DLLs beside the
# library, and, when cross-building, Wine to run the tests and examples.
include(GNUInstallDirs)

# The runtime DLLs that zvl.dll, the tests and the examples load.
set(ZVL_MINGW_RUNTIME "")
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll libgomp-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                  OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT IS_ABSOLUTE "${path}" OR NOT EXISTS "${path}")
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where ${dll} is")
  endif()
  file(REAL_PATH "${path}" path)
  list(APPEND ZVL_MINGW_RUNTIME "${path}")
endforeach()
# The build folder holds zvl.dll and the test library: the runtime DLLs go
# there too, and into the installation's bin folder.
file(COPY ${ZVL_MINGW_RUNTIME} DESTINATION ${CMAKE_BINARY_DIR})
install(FILES ${ZVL_MINGW_RUNTIME} DESTINATION ${CMAKE_INSTALL_BINDIR})

if(CMAKE_CROSSCOMPILING)
  # ctest runs each Windows program through this wrapper (the emulator of
  # every executable target): a private Wine prefix under the build folder,
  # the build folder on the DLL search path, the environment passed on.
  find_program(ZVL_WINE NAMES wine64 wine HINTS /usr/lib/wine REQUIRED)
  set(ZVL_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/wine-run.sh.in ${CMAKE_BINARY_DIR}/wine-run.sh
                 @ONLY FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
                 GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_BINARY_DIR}/wine-run.sh)
endif()
