# se_test(<name> SOURCES <files> [LIBRARIES <targets>] [DEPENDS <targets>]): a GoogleTest program in bin/,
# each of its tests a CTest test of its own, so that each runs in a fresh process.
include(GoogleTest)

# With AddressSanitizer it is the tested code that is instrumented: instrumenting the tests, too, triples the time
# of such a build. ThreadSanitizer has to see both.
function(se_test_flags target)
  # Their own work is small.
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  if(SE_WRAPPER_SANITIZE MATCHES "address")
    target_compile_options(${target} PRIVATE -fno-sanitize=all)
    # They ask whether the process is instrumented, not their own code.
    target_compile_definitions(${target} PRIVATE __SANITIZE_ADDRESS__=1)
  endif()
endfunction()

function(se_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  se_test_flags(${name})
  target_link_libraries(${name} PRIVATE
    se_build_flags se_test_support ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main)
  target_precompile_headers(${name} REUSE_FROM se_test_support)
  if(ARG_DEPENDS)
    add_dependencies(${name} ${ARG_DEPENDS})
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
endfunction()
