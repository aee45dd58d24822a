# The library's sources: every .cpp of the base layer and of the
# subsystems, and the platform back end of the target system.
file(GLOB ZVL_SOURCES CONFIGURE_DEPENDS
     ${PROJECT_SOURCE_DIR}/base/*.cpp
     ${PROJECT_SOURCE_DIR}/frame/*.cpp
     ${PROJECT_SOURCE_DIR}/state/*.cpp
     ${PROJECT_SOURCE_DIR}/threading/*.cpp
     ${PROJECT_SOURCE_DIR}/kernels/*/*.cpp
     ${PROJECT_SOURCE_DIR}/kernels/*/*/*.cpp)
if(WIN32)
  file(GLOB _platform CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/win32/*.cpp)
  # The DLL entry routine goes into the DLLs alone (zvl_set_exports,
  # zvl_export_all), not into the static library's programs.
  set(ZVL_DLL_ENTRY ${PROJECT_SOURCE_DIR}/platform/win32/dll_main.cpp)
  list(REMOVE_ITEM _platform ${ZVL_DLL_ENTRY})
else()
  file(GLOB _platform CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/posix/*.cpp)
endif()
list(APPEND ZVL_SOURCES ${_platform})
