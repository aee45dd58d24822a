# What `cmake --install` lays out under the prefix:
#   lib/            libzvl.so.<major> with its links (Windows: bin/zvl.dll and
#                   lib/libzvl.dll.a), libzvl.a where the static library is built
#   include/        zvl.h, zvl_version.h; zvl.f90 and zvl.mod with gfortran
#   lib/cmake/zvl/  the CMake package: targets zvl::zvl and zvl::zvl_static
#   lib/pkgconfig/  zvl.pc
#   lib/python3/dist-packages/zvl   the Python package (ZVL_PYTHON_INSTALL_DIR)
#   share/doc/zvl/  README, LICENSE, CHANGELOG and the docs
include(CMakePackageConfigHelpers)
set(ZVL_CMAKE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zvl)
set(ZVL_DOC_INSTALL_DIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/zvl)
set(ZVL_PYTHON_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/python3/dist-packages CACHE STRING
    "Where the Python package zvl is installed, relative to the prefix")

install(TARGETS zvl EXPORT zvlTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT zvlTargets NAMESPACE zvl:: DESTINATION ${ZVL_CMAKE_INSTALL_DIR})
if(ZVL_BUILD_STATIC)
  install(TARGETS zvl_static EXPORT zvlStaticTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT zvlStaticTargets NAMESPACE zvl:: DESTINATION ${ZVL_CMAKE_INSTALL_DIR})
endif()
install(FILES include/zvl.h ${PROJECT_BINARY_DIR}/include/zvl_version.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

configure_package_config_file(cmake/zvlConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/zvlConfig.cmake INSTALL_DESTINATION ${ZVL_CMAKE_INSTALL_DIR})
# 0.x releases only add functions, so any later 0.x satisfies an earlier
# request; a new major number is a new soname (README, "Versions").
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/zvlConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
# find_package(ZVL) looks for zvl-config.cmake: both spellings find the package.
file(WRITE ${PROJECT_BINARY_DIR}/package/zvl-config.cmake
     "include(\"\${CMAKE_CURRENT_LIST_DIR}/zvlConfig.cmake\")\n")
file(WRITE ${PROJECT_BINARY_DIR}/package/zvl-config-version.cmake
     "include(\"\${CMAKE_CURRENT_LIST_DIR}/zvlConfigVersion.cmake\")\n")
install(FILES ${PROJECT_BINARY_DIR}/package/zvlConfig.cmake
              ${PROJECT_BINARY_DIR}/package/zvlConfigVersion.cmake
              ${PROJECT_BINARY_DIR}/package/zvl-config.cmake
              ${PROJECT_BINARY_DIR}/package/zvl-config-version.cmake
        DESTINATION ${ZVL_CMAKE_INSTALL_DIR})

# pkg-config: paths relative to the .pc file, so the tree can move.
file(RELATIVE_PATH ZVL_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" ZVL_PC_PREFIX "\${pcfiledir}/${ZVL_PC_PREFIX}")
# What a static link adds after the archive: the OpenMP runtime, and on
# Linux the loader and thread libraries.
if(WIN32)
  set(ZVL_PC_PRIVATE "-lgomp")
else()
  set(ZVL_PC_PRIVATE "-lgomp -ldl -lpthread")
endif()
configure_file(cmake/zvl.pc.in ${PROJECT_BINARY_DIR}/package/zvl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/zvl.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES README.md LICENSE CHANGELOG.md DESTINATION ${ZVL_DOC_INSTALL_DIR})
install(DIRECTORY docs/ DESTINATION ${ZVL_DOC_INSTALL_DIR}/docs FILES_MATCHING PATTERN "*.md"
        PATTERN data EXCLUDE)

# The Python package finds the library by the path from its own folder to
# the library's, written into _location.py at install time.
if(WIN32)
  set(ZVL_PY_LIBDIR ${CMAKE_INSTALL_BINDIR})
  set(ZVL_PY_LIBNAME zvl.dll)
else()
  set(ZVL_PY_LIBDIR ${CMAKE_INSTALL_LIBDIR})
  set(ZVL_PY_LIBNAME libzvl.so.${PROJECT_VERSION_MAJOR})
endif()
file(RELATIVE_PATH ZVL_PY_RELATIVE "/${ZVL_PYTHON_INSTALL_DIR}/zvl" "/${ZVL_PY_LIBDIR}")
configure_file(cmake/zvl_location.py.in ${PROJECT_BINARY_DIR}/package/_location.py @ONLY)
install(DIRECTORY python/zvl/ DESTINATION ${ZVL_PYTHON_INSTALL_DIR}/zvl
        FILES_MATCHING PATTERN "*.py" PATTERN "__pycache__" EXCLUDE)
install(FILES ${PROJECT_BINARY_DIR}/package/_location.py DESTINATION ${ZVL_PYTHON_INSTALL_DIR}/zvl)
