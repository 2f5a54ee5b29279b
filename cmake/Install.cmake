# What is installed: the libraries, their headers, a pkg-config file and a CMake package.
include(CMakePackageConfigHelpers)

set(staticTargets)
set(libsPrivate) # what pkg-config --static adds
if(KVLM_STATIC)
  include(cmake/Static.cmake)
  set(staticTargets kvlcore_static kvlm_static)
  set(libsPrivate "-Wl,-Bdynamic -l:libomp.so.5 -lm -ldl")
endif()
install(TARGETS kvlcore kvlm ${staticTargets} EXPORT kvlmTargets)
install(DIRECTORY kvlcore/include/ kvlm/include/ TYPE INCLUDE)

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/kvlm")
install(EXPORT kvlmTargets NAMESPACE kvlm:: DESTINATION "${packageFolder}")
configure_package_config_file(cmake/kvlmConfig.cmake.in kvlmConfig.cmake INSTALL_DESTINATION "${packageFolder}")
write_basic_package_version_file(kvlmConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/kvlmConfig.cmake" "${PROJECT_BINARY_DIR}/kvlmConfigVersion.cmake"
  DESTINATION "${packageFolder}")

# The pkg-config file tells its prefix by its own place, so that an installed tree can be moved; but the system's by its
# name, so that no option repeats what compilers search anyway.
file(RELATIVE_PATH prefixFromPkgConfig "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" prefixFromPkgConfig "${prefixFromPkgConfig}")
set(pkgConfigPrefix "\${pcfiledir}/${prefixFromPkgConfig}")
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(pkgConfigPrefix "/usr")
endif()
file(RELATIVE_PATH libdirFromPrefix "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH includedirFromPrefix "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
configure_file(cmake/kvlm.pc.in kvlm.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/kvlm.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
