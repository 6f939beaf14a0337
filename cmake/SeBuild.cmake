# What every target of this project shares: the language level, the warnings, the layout of the build
# tree. Programs and tests have their engine builds beside them, in bin/selibs/; libraries in lib/ find them as in an
# installation.

# The build type belongs to the top-level project. Everything else here is set for this project's folders alone.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
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
  # AddressSanitizer finds the accesses that the first two checks find, and most of those of the third. These
  # checks take a third of the build time.
  add_compile_options(-fno-sanitize=null,object-size,pointer-overflow)
  # gcc's analysis of what pointers point to takes two thirds of the time in which it compiles a checked kernel.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fno-tree-pta)
  endif()
  add_link_options(-fsanitize=${SE_WRAPPER_SANITIZE})
endif()

# For folders whose code keeps vectors of 64 bytes on its stack: the stack with which gcc's AddressSanitizer finds uses
# after a return is aligned to 32 bytes, which is too little for them.
macro(se_wide_vectors_on_stack)
  if(SE_WRAPPER_SANITIZE MATCHES "address" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(--param=asan-use-after-return=0)
  endif()
endmacro()

include(GNUInstallDirs)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(SE_ENGINE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin/selibs)
# Where an installation has them.
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/lib/libse_wrapper)
file(CREATE_LINK ../../bin/selibs ${PROJECT_BINARY_DIR}/lib/libse_wrapper/selibs SYMBOLIC)

# Libraries are found relative to the file that needs them, in the build tree and in an installation: an installed
# file keeps its runpath. CMake's own runpath for the build tree ends in an empty entry, which means the current folder.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH $ORIGIN/../lib)

# The flags of every target: warnings and floating-point rules. Contraction is off so that a processor with FMA gives the same
# bits as one without.
add_library(se_build_flags INTERFACE)
target_compile_options(se_build_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -ffp-contract=off
  $<$<BOOL:${SE_WRAPPER_WERROR}>:-Werror>)
target_include_directories(se_build_flags INTERFACE ${PROJECT_SOURCE_DIR})

# What limits the damage of a fault in memory: functions check the arrays on their stack before they return, indirect
# jumps go to marked places alone (on processors that enforce it), and the C library checks sizes where the compiler
# knows them, which needs an optimised build. Sanitizers find more; they do not see checked calls.
target_compile_options(se_build_flags INTERFACE -fstack-protector-strong -fcf-protection=full)
if(NOT SE_WRAPPER_SANITIZE)
  target_compile_options(se_build_flags INTERFACE
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()

# Calls between the libraries are bound when a file is loaded; the tables for them are read-only after that. No stack
# is executable. Programs can be loaded at any address. (CMake's own check for that would change the parent's settings.)
target_link_options(se_build_flags INTERFACE
  -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
  $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)

# The same for an installed library, which also names every library from which it takes symbols. With sanitizers this
# is not possible: the program provides their symbols.
add_library(se_library_flags INTERFACE)
target_link_libraries(se_library_flags INTERFACE se_build_flags)
if(NOT SE_WRAPPER_SANITIZE)
  target_link_options(se_library_flags INTERFACE -Wl,-z,defs)
endif()

# se_find(<purpose> <debian package> <name> [<find_package arguments...>]): a missing package is named together
# with what it is for.
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
