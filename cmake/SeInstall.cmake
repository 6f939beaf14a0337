# What an installation holds: headers, both libraries, the engine builds beside the programs, a CMake
# package and a pkg-config file. Everything is found relative to itself, so the tree may be moved.

include(CMakePackageConfigHelpers)

install(TARGETS se_common se_wrapper EXPORT se_wrapper_targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# The headers that a host may include: se_wrapper.h and what it gathers.
install(DIRECTORY common/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/libse_wrapper/common
  FILES_MATCHING PATTERN "*.h")
install(DIRECTORY webrtc_common/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/libse_wrapper/webrtc_common
  FILES_MATCHING PATTERN "*.h"
  PATTERN "*.inl.h" EXCLUDE)

set(se_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/se_wrapper)
install(EXPORT se_wrapper_targets NAMESPACE se_wrapper:: DESTINATION ${se_cmake_dir})
configure_package_config_file(cmake/se_wrapper-config.cmake.in
  ${CMAKE_BINARY_DIR}/se_wrapper-config.cmake INSTALL_DESTINATION ${se_cmake_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/se_wrapper-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_BINARY_DIR}/se_wrapper-config.cmake
  ${CMAKE_BINARY_DIR}/se_wrapper-config-version.cmake
  DESTINATION ${se_cmake_dir})

file(RELATIVE_PATH se_prefix_from_pkgconfig
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/se_wrapper.pc.in ${CMAKE_BINARY_DIR}/se_wrapper.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/se_wrapper.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
