# Tests: how a test program is made and registered. Included only when tests are built.

include( GoogleTest )

# Built here from its package's source, so that it carries each preset's own flags.
set( LUMO_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Source of GoogleTest" )
set( INSTALL_GTEST OFF )
add_subdirectory( "${LUMO_GOOGLETEST_DIR}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM )

# GoogleTest's header, compiled once for all tests.
file( CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/testHeader.cpp" CONTENT "int main() {}\n" )
add_executable( testHeader EXCLUDE_FROM_ALL "${CMAKE_CURRENT_BINARY_DIR}/testHeader.cpp" )
target_link_libraries( testHeader PRIVATE lumoWarnings GTest::gtest )
target_precompile_headers( testHeader PRIVATE <gtest/gtest.h> )

# lumo_test( NAME n SOURCES ... [LIBS ...] [LABELS ...] [FILTER f] [COMPUTES] )
#
# Every TEST in the sources becomes a test of ctest named n.Suite.test. The label is "unit" unless
# LABELS says otherwise; FILTER, as GoogleTest reads it, leaves some out. One that COMPUTES for minutes
# is optimised in every build. The program links the shared library as a user's would.
function( lumo_test )
  cmake_parse_arguments( PARSE_ARGV 0 test "COMPUTES" "NAME;FILTER" "SOURCES;LIBS;LABELS" )
  if( test_UNPARSED_ARGUMENTS OR NOT test_NAME OR NOT test_SOURCES )
    message( FATAL_ERROR "lumo_test() needs NAME and SOURCES; it does not know '${test_UNPARSED_ARGUMENTS}'" )
  endif()
  if( NOT test_LABELS )
    set( test_LABELS unit )
  endif()
  add_executable( ${test_NAME} ${test_SOURCES} )
  # Each file has helpers of its own, often of the same name.
  set_target_properties( ${test_NAME} PROPERTIES UNITY_BUILD OFF )
  target_link_libraries( ${test_NAME} PRIVATE ${test_LIBS} Lumo::Lumo lumoWarnings GTest::gtest_main )
  target_include_directories( ${test_NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests" )
  if( test_COMPUTES )  # what is compiled once for all is not optimised so
    target_compile_options( ${test_NAME} PRIVATE $<$<CONFIG:Debug>:-O1> )
  else()
    target_precompile_headers( ${test_NAME} REUSE_FROM testHeader )
  endif()
  gtest_discover_tests( ${test_NAME}
    TEST_PREFIX "${test_NAME}."
    TEST_FILTER "${test_FILTER}"
    DISCOVERY_MODE PRE_TEST
    NO_PRETTY_VALUES   # a parameter without a printer would put its address into the test's name
    DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS "${test_LABELS}" TIMEOUT 120
  )
endfunction()

# What the tests that lumo_program_test() registers run; ./test builds it in the release tree.
add_custom_target( testedPrograms )

# lumo_program_test( NAME n LABEL l PROGRAMS target... COMMAND ... [PROPERTIES ...] )
#
# A test that runs whole programs as a user does. PROGRAMS are all that it starts, whoever starts them.
function( lumo_program_test )
  cmake_parse_arguments( PARSE_ARGV 0 test "" "NAME;LABEL" "PROGRAMS;COMMAND;PROPERTIES" )
  if( test_UNPARSED_ARGUMENTS OR NOT test_NAME OR NOT test_LABEL OR NOT test_PROGRAMS OR NOT test_COMMAND )
    message( FATAL_ERROR
      "lumo_program_test() needs NAME, LABEL, PROGRAMS and COMMAND; it does not know '${test_UNPARSED_ARGUMENTS}'" )
  endif()
  add_dependencies( testedPrograms ${test_PROGRAMS} )
  add_test( NAME ${test_NAME} COMMAND ${test_COMMAND} WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}" )
  set_tests_properties( ${test_NAME} PROPERTIES
    LABELS ${test_LABEL} SKIP_RETURN_CODE 77 TIMEOUT 120 ${test_PROPERTIES} )
endfunction()

add_custom_target( fuzzers )

# lumo_fuzz( NAME n SOURCES ... SEEDS folder-or-file... [LIBS ...] )
#
# The sources define LLVMFuzzerTestOneInput. With LUMO_FUZZ it becomes a libFuzzer program and a test
# labelled "fuzz" that searches for LUMO_FUZZ_SECONDS, starting from the seeds; otherwise a program
# that replays the seeds and cuts of them, labelled "fuzz-replay".
function( lumo_fuzz )
  cmake_parse_arguments( PARSE_ARGV 0 fuzz "" "NAME" "SOURCES;SEEDS;LIBS" )
  if( fuzz_UNPARSED_ARGUMENTS OR NOT fuzz_NAME OR NOT fuzz_SOURCES OR NOT fuzz_SEEDS )
    message( FATAL_ERROR "lumo_fuzz() needs NAME, SOURCES and SEEDS; it does not know '${fuzz_UNPARSED_ARGUMENTS}'" )
  endif()
  add_executable( ${fuzz_NAME} ${fuzz_SOURCES} )
  set_target_properties( ${fuzz_NAME} PROPERTIES UNITY_BUILD OFF )
  target_link_libraries( ${fuzz_NAME} PRIVATE ${fuzz_LIBS} Lumo::Lumo lumoWarnings )
  target_include_directories( ${fuzz_NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests" )
  add_dependencies( fuzzers ${fuzz_NAME} )
  if( LUMO_FUZZ )
    target_link_options( ${fuzz_NAME} PRIVATE -fsanitize=fuzzer )
    set( found "${CMAKE_CURRENT_BINARY_DIR}/${fuzz_NAME}-corpus" )
    file( MAKE_DIRECTORY "${found}" )
    add_test( NAME ${fuzz_NAME} COMMAND ${fuzz_NAME} -max_total_time=${LUMO_FUZZ_SECONDS} -timeout=10
              -rss_limit_mb=2048 -print_final_stats=1 "${found}" ${fuzz_SEEDS} )
    math( EXPR limit "${LUMO_FUZZ_SECONDS} + 120" )
    set_tests_properties( ${fuzz_NAME} PROPERTIES LABELS fuzz TIMEOUT ${limit} )
  else()
    target_sources( ${fuzz_NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests/fuzz/Replay.cpp" )
    add_test( NAME ${fuzz_NAME} COMMAND ${fuzz_NAME} ${fuzz_SEEDS} )
    set_tests_properties( ${fuzz_NAME} PROPERTIES LABELS fuzz-replay TIMEOUT 120 )
  endif()
endfunction()
