# Fuzz targets. Included by ../CMakeLists.txt, behind differential/differential.cmake.
#
# Each target is linked with a main function that replays its corpus, as an ordinary test, and, when asked
# for, with libFuzzer. For the latter the whole build must be instrumented, which the preset fuzz does.

option(TESTCOMMANDLINEPARSER_BUILD_FUZZERS "Build the fuzzers (clang only)" OFF)
if(TESTCOMMANDLINEPARSER_BUILD_FUZZERS AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "TESTCOMMANDLINEPARSER_BUILD_FUZZERS needs clang.")
endif()
add_custom_target(fuzzers)

# Makes NAME_replay, NAME_fuzzer and the test fuzz.replay.NAME.
# testcommandlineparser_add_fuzz_target(NAME SOURCE...)
function(testcommandlineparser_add_fuzz_target name)
  add_library(fuzz_${name} OBJECT ${ARGN})
  # The object files of the library: a sanitizer's runtime is not linked to a shared library.
  target_link_libraries(fuzz_${name} PUBLIC testcommandlineparser_objects reference_model)
  testcommandlineparser_set_warnings(fuzz_${name})

  add_executable(${name}_replay fuzz/replay_main.cpp)
  set(executables ${name}_replay)
  if(TESTCOMMANDLINEPARSER_BUILD_FUZZERS)
    add_executable(${name}_fuzzer)
    target_link_options(${name}_fuzzer PRIVATE -fsanitize=fuzzer)
    list(APPEND executables ${name}_fuzzer)
  endif()
  foreach(executable IN LISTS executables)
    target_link_libraries(${executable} PRIVATE fuzz_${name} testcommandlineparser_objects)
    testcommandlineparser_set_warnings(${executable})
    add_dependencies(fuzzers ${executable})
  endforeach()

  add_test(NAME fuzz.replay.${name}
    COMMAND ${name}_replay ${CMAKE_CURRENT_SOURCE_DIR}/fuzz/corpus/${name})
  set_tests_properties(fuzz.replay.${name} PROPERTIES TIMEOUT 120)
endfunction()

testcommandlineparser_add_fuzz_target(scenario
  fuzz/scenario_fuzzer.cpp fuzz/scenario_text.cpp ${differential_sources})
testcommandlineparser_add_fuzz_target(tokenizer
  fuzz/tokenizer_fuzzer.cpp differential/scenario.cpp)
testcommandlineparser_add_fuzz_target(expansion
  fuzz/expansion_fuzzer.cpp differential/process_environment.cpp differential/scenario.cpp)

testcommandlineparser_add_tests(fuzz_tests differential_support
  fuzz/scenario_text.cpp fuzz/scenario_text_test.cpp)
