# The library's sources: every .cpp of the base layer and of the
# subsystems, the per-cpu units of each kernel subsystem, and the platform
# back end of the target system.
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

# Each kernel subsystem with a family list (kernels/<subsystem>/families.h)
# is compiled once per cpu type: the units cpu_<label>.cpp are written here,
# each its cpu type and the list, and get that type's instruction set.
file(GLOB _family_lists CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/kernels/*/families.h)
foreach(_list IN LISTS _family_lists)
  get_filename_component(_dir ${_list} DIRECTORY)
  get_filename_component(_subsystem ${_dir} NAME)
  set(_index 0)
  foreach(_label ex e7 u8 y8 h8 e9)
    set(_unit ${PROJECT_BINARY_DIR}/kernels/${_subsystem}/cpu_${_label}.cpp)
    file(CONFIGURE OUTPUT ${_unit} CONTENT
         "// The ${_subsystem} kernels of cpu type ${_index}, written by cmake/zvl_sources.cmake.\n#define ZVL_CPU_INDEX ${_index}\n#include \"kernels/${_subsystem}/families.h\"\n")
    list(APPEND ZVL_SOURCES ${_unit})
    math(EXPR _index "${_index} + 1")
  endforeach()
endforeach()
