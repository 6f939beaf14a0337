# se_test(<name> SOURCES <files> [LIBRARIES <targets>] [DEPENDS <targets>] [LABELS <labels>] [SLOW <regex>]): a GoogleTest
# program in bin/, each of its tests a CTest test of its own, so that each runs in a fresh process. Every test has
# the label "unit", that of its folder below tests/, and LABELS; "slow" those whose names match SLOW; "needs-AVX" those
# of an AVX variant.
include(GoogleTest)

# With AddressSanitizer only the tested code is instrumented, because instrumented tests triple the build time.
# ThreadSanitizer needs both.
function(se_test_flags target)
  # Optimisation has little effect on them.
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  if(SE_WRAPPER_SANITIZE MATCHES "address")
    target_compile_options(${target} PRIVATE -fno-sanitize=all)
    # The tests read this macro to know that the process is instrumented.
    target_compile_definitions(${target} PRIVATE __SANITIZE_ADDRESS__=1)
  endif()
endfunction()

# CTest reads the program's tests when it starts, then this file, which labels them.
function(se_label_tests name labels slow)
  set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}_labels.cmake)
  file(CONFIGURE OUTPUT ${file} @ONLY CONTENT [[
foreach(test IN LISTS @name@_TESTS)
  set(labels "@labels@")
  if(NOT "@slow@" STREQUAL "" AND test MATCHES "@slow@")
    list(APPEND labels slow)
  endif()
  if(test MATCHES "/avx[^/]*$")
    list(APPEND labels needs-AVX)
  endif()
  set_tests_properties("${test}" PROPERTIES LABELS "${labels}")
endforeach()
]])
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${file})
endfunction()

function(se_test name)
  cmake_parse_arguments(ARG "" "SLOW" "SOURCES;LIBRARIES;DEPENDS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  se_test_flags(${name})
  target_link_libraries(${name} PRIVATE
    se_build_flags se_test_support ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main)
  target_precompile_headers(${name} REUSE_FROM se_test_support)
  if(ARG_DEPENDS)
    add_dependencies(${name} ${ARG_DEPENDS})
  endif()
  gtest_discover_tests(${name} NO_PRETTY_VALUES
    DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
  string(REGEX REPLACE "/.*" "" folder ${folder})
  set(labels unit ${folder} ${ARG_LABELS})
  se_label_tests(${name} "${labels}" "${ARG_SLOW}")
endfunction()

# se_script_test(<name> LABELS <labels> COMMAND <command>...): a test that is a script.
function(se_script_test name)
  cmake_parse_arguments(ARG "" "" "LABELS;COMMAND" ${ARGN})
  add_test(NAME ${name} COMMAND ${ARG_COMMAND})
  set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}")
endfunction()

# se_skipped_test(<name> <reason>): replaces a test that cannot run in this build.
function(se_skipped_test name reason)
  add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E echo "skipped: ${reason}")
  set_tests_properties(${name} PROPERTIES SKIP_REGULAR_EXPRESSION "skipped: ")
endfunction()
