# Compiler flags. No fast-math anywhere and no FMA contraction: every
# rounding in a kernel is the one written. Kernel units get exactly their
# cpu type's instruction set on top of the x86-64 baseline, and
# -frounding-math, since several run under a rounding mode they set or one
# the caller chose. -fno-math-errno changes no result: it lets sqrt and the
# like stay instructions, since errno is the error pipeline's alone. clang
# by default may compute a value ahead of the test that guards it and raise
# a flag the code as written never raises (g++ keeps such operations behind
# their test): maytrap forbids that.
set(ZVL_COMMON_FLAGS
    -march=x86-64 -mtune=generic
    -ffp-contract=off -fno-fast-math -fno-math-errno -fno-exceptions -fno-rtti
    -fno-semantic-interposition
    -Wall -Wextra)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  list(APPEND ZVL_COMMON_FLAGS -ffp-exception-behavior=maytrap)
endif()

set(ZVL_CPU_FLAGS_ex -msse2)
set(ZVL_CPU_FLAGS_e7 -msse3)
set(ZVL_CPU_FLAGS_u8 -mssse3)
set(ZVL_CPU_FLAGS_y8 -msse4.1)
set(ZVL_CPU_FLAGS_h8 -msse4.2)
set(ZVL_CPU_FLAGS_e9 -mavx)

# Per-cpu units are named cpu_<label>.cpp.
function(zvl_apply_cpu_flags sources)
  foreach(src IN LISTS sources)
    get_filename_component(name "${src}" NAME_WE)
    if(name MATCHES "^cpu_(ex|e7|u8|y8|h8|e9)$")
      set_source_files_properties(${src} TARGET_DIRECTORY zvl_objects PROPERTIES
        COMPILE_OPTIONS "${ZVL_CPU_FLAGS_${CMAKE_MATCH_1}};-frounding-math")
    endif()
  endforeach()
endfunction()

# Sanitizer builds (clang): every C and C++ target, tests and tools
# included, with the same -fsanitize list. A sanitized shared library leaves the runtime's
# symbols to the program that loads it, so it cannot insist on resolving
# every symbol at link time; and the C programs that load it link the C++
# part of the sanitizer runtime, which its checks call.
if(ZVL_SANITIZE)
  add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-fsanitize=${ZVL_SANITIZE};-fno-omit-frame-pointer;-fno-sanitize-recover=all>")
  add_link_options("$<$<LINK_LANGUAGE:C,CXX>:-fsanitize=${ZVL_SANITIZE}>"
                   "$<$<LINK_LANGUAGE:C>:-fsanitize-link-c++-runtime;-lstdc++>")
  set(ZVL_NO_UNDEFINED "")
else()
  set(ZVL_NO_UNDEFINED -Wl,--no-undefined)
endif()

if(WIN32)
  set(ZVL_PLATFORM_LIBS "")
else()
  set(ZVL_PLATFORM_LIBS dl pthread)
endif()

# A DLL's entry routine, compiled as the library's own code.
function(zvl_add_dll_entry target)
  target_sources(${target} PRIVATE ${ZVL_DLL_ENTRY})
  set_source_files_properties(${ZVL_DLL_ENTRY} TARGET_DIRECTORY ${target} PROPERTIES
    INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR};${ZVL_INCLUDE_DIRS}"
    COMPILE_DEFINITIONS ZVL_BUILDING_LIBRARY COMPILE_OPTIONS "${ZVL_COMMON_FLAGS}")
endfunction()

# The product exports exactly the names of frame/exports.txt: a version
# script for the shared object and a module-definition file for the DLL are
# written from it at configure time.
set(ZVL_EXPORT_LIST ${PROJECT_SOURCE_DIR}/frame/exports.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ZVL_EXPORT_LIST})
file(STRINGS ${ZVL_EXPORT_LIST} ZVL_EXPORT_NAMES REGEX "^[A-Za-z_]")
# What the product exports, counted apart from the list: the 53 functions
# and their _Idx forms, the 2 mode calls and the 6 thread controls.
set(ZVL_EXPORT_COUNT 114)
list(JOIN ZVL_EXPORT_NAMES ";\n    " _zvl_map_names)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/zvl.map CONTENT
     "/* Written from frame/exports.txt. */\n{\n  global:\n    ${_zvl_map_names};\n  local:\n    *;\n};\n")
list(JOIN ZVL_EXPORT_NAMES "\n    " _zvl_def_names)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/zvl.def CONTENT
     "; Written from frame/exports.txt.\nLIBRARY zvl.dll\nEXPORTS\n    ${_zvl_def_names}\n")

function(zvl_set_exports target)
  if(WIN32)
    # zvl.dll with the import library libzvl.dll.a.
    zvl_add_dll_entry(${target})
    target_sources(${target} PRIVATE ${PROJECT_BINARY_DIR}/zvl.def)
    set_target_properties(${target} PROPERTIES PREFIX "")
  else()
    target_link_options(${target} PRIVATE
      -Wl,--version-script=${PROJECT_BINARY_DIR}/zvl.map ${ZVL_NO_UNDEFINED})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PROJECT_BINARY_DIR}/zvl.map)
  endif()
endfunction()

function(zvl_export_all target)
  if(WIN32)
    zvl_add_dll_entry(${target})
    target_link_options(${target} PRIVATE -Wl,--export-all-symbols)
  else()
    target_link_options(${target} PRIVATE ${ZVL_NO_UNDEFINED})
  endif()
endfunction()
