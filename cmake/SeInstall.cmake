# The contents of an installation: headers, libraries, the engine builds, programs, a CMake package and pkg-config
# files. Everything is found relative to itself, so the tree may be moved.
#
# Other libraries are called libcommon, too. Ours is in a separate folder, and the files that need it name the folder
# in their runpath. The engine builds stand there, too; host/engine/installed_engines.h finds them.

include(CMakePackageConfigHelpers)

set(se_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/libse_wrapper)
set(se_private_lib_dir ${CMAKE_INSTALL_LIBDIR}/libse_wrapper)
set(se_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/se_wrapper)

install(TARGETS se_common EXPORT se_wrapper_targets
  LIBRARY DESTINATION ${se_private_lib_dir}
  FILE_SET HEADERS DESTINATION ${se_include_dir})
install(TARGETS se_wrapper EXPORT se_wrapper_targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${se_include_dir})

if(TARGET se_host_library)
  install(TARGETS se_host_library EXPORT se_wrapper_targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${se_include_dir})
endif()

install(TARGETS ${SE_ENGINE_TARGETS} EXPORT se_wrapper_targets
  LIBRARY DESTINATION ${se_private_lib_dir}/selibs)

if(TARGET se_host)
  install(TARGETS se_host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES tools/se_host/se_host.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  # From the program "../share": tools/se_host/sweep/backend.cpp looks there.
  install(DIRECTORY tools/se_host/sweep/backends/ DESTINATION share/libse_wrapper/sweep
    FILES_MATCHING PATTERN "*.sh"
    PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  # The last entry is the build tree's.
  file(RELATIVE_PATH se_lib_from_bin /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
  set(se_runpath $ORIGIN/${se_lib_from_bin}/libse_wrapper $ORIGIN/${se_lib_from_bin} $ORIGIN/../lib)
  list(REMOVE_DUPLICATES se_runpath)
  set_target_properties(se_host PROPERTIES INSTALL_RPATH "${se_runpath}")
  install(FILES tools/se_host/se_host.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME se_host)
endif()

install(EXPORT se_wrapper_targets NAMESPACE se_wrapper:: DESTINATION ${se_cmake_dir})
configure_package_config_file(cmake/se_wrapper-config.cmake.in
  ${PROJECT_BINARY_DIR}/se_wrapper-config.cmake INSTALL_DESTINATION ${se_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/se_wrapper-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/se_wrapper-config.cmake
  ${PROJECT_BINARY_DIR}/se_wrapper-config-version.cmake
  cmake/SeEngines.cmake
  DESTINATION ${se_cmake_dir})

file(RELATIVE_PATH se_prefix_from_pkgconfig
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/se_wrapper.pc.in ${PROJECT_BINARY_DIR}/se_wrapper.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/se_wrapper.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(TARGET se_host_library)
  configure_file(cmake/se_host.pc.in ${PROJECT_BINARY_DIR}/se_host.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/se_host.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
