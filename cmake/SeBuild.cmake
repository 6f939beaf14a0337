# What every target of this project shares: the language level, the warnings, the layout of the build
# tree. The tree has the layout of an installation (bin/, bin/selibs/, lib/), so that a program finds
# its engine builds in either.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(SE_WRAPPER_SANITIZE)
  add_compile_options(-fsanitize=${SE_WRAPPER_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # AddressSanitizer stops at the accesses that the first two find, and at most that follow from the third; they
  # are a third of a build's time.
  add_compile_options(-fno-sanitize=null,object-size,pointer-overflow)
  add_link_options(-fsanitize=${SE_WRAPPER_SANITIZE})
endif()

include(GNUInstallDirs)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(SE_ENGINE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/selibs)
set(SE_ENGINE_INSTALL_DIRECTORY ${CMAKE_INSTALL_BINDIR}/selibs)

# Libraries are found relative to whoever needs them, built or installed.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
file(RELATIVE_PATH se_lib_from_bin /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${se_lib_from_bin}")

# Warnings and floating-point rules. Contraction is off so that a processor with FMA gives the same
# bits as one without.
add_library(se_build_flags INTERFACE)
target_compile_options(se_build_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -ffp-contract=off
  $<$<BOOL:${SE_WRAPPER_WERROR}>:-Werror>)
target_include_directories(se_build_flags INTERFACE ${CMAKE_SOURCE_DIR})

# se_find(<purpose> <debian package> <name> [<find_package arguments...>]): a missing package is named together
# with what it is for, instead of CMake's generic message.
macro(se_find purpose debian_package name)
  find_package(${name} ${ARGN} QUIET)
  if(NOT ${name}_FOUND)
    message(FATAL_ERROR "${name} is needed for ${purpose}. On Debian: apt-get install ${debian_package}")
  endif()
endmacro()

# se_find_pkgconfig(<purpose> <debian package> <pkg-config module>) makes the target PkgConfig::<module>.
macro(se_find_pkgconfig purpose debian_package module)
  find_package(PkgConfig QUIET)
  if(NOT PkgConfig_FOUND)
    message(FATAL_ERROR "pkg-config is needed for ${purpose}. On Debian: apt-get install pkg-config")
  endif()
  pkg_check_modules(${module} QUIET IMPORTED_TARGET ${module})
  if(NOT ${module}_FOUND)
    message(FATAL_ERROR "${module} is needed for ${purpose}. On Debian: apt-get install ${debian_package}")
  endif()
endmacro()
