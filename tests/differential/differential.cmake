# The reference model, and the tests that hold the library to it. Included by ../CMakeLists.txt.

add_library(reference_model STATIC model/model.cpp)
target_compile_features(reference_model PUBLIC cxx_std_17)
target_include_directories(reference_model PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
testcommandlineparser_set_warnings(reference_model)
testcommandlineparser_add_tests(model_tests reference_model model/model_test.cpp)

# Scenarios and their comparison, without GoogleTest: a fuzz target can be made of these and the model.
set(differential_sources comparison.cpp observation.cpp process_environment.cpp scenario.cpp scenario_generator.cpp
  scenario_shrinker.cpp text_generator.cpp)
list(TRANSFORM differential_sources PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
add_library(differential_support STATIC ${differential_sources})
target_link_libraries(differential_support
  PUBLIC reference_model Orvex::testcommandlineparser ${CMAKE_DL_LIBS})
testcommandlineparser_set_warnings(differential_support)

testcommandlineparser_add_tests(differential_tests differential_support
  differential/exhaustive_tokens_test.cpp
  differential/exhaustive_transport_test.cpp
  differential/exhaustive_variables_test.cpp
  differential/exhaustive_wide_test.cpp
  differential/random_test.cpp
  differential/scenario_test.cpp
)

# The hidden functions are compared one by one, through the library's object files.
testcommandlineparser_add_tests(differential_internal_tests testcommandlineparser_objects
  differential/exhaustive_functions_test.cpp
  differential/exhaustive_registry_test.cpp
  differential/process_environment.cpp
)
target_link_libraries(differential_internal_tests PRIVATE reference_model)

# In the suite above the exhaustive tests take small inputs only. These take the large ones: millions of
# cases, each entry small enough for the entries to share two processors. The filters take no blanks.
function(testcommandlineparser_add_deep_test name target filter)
  add_test(NAME deep.${name} COMMAND ${target} --gtest_filter=${filter})
  # A filter that matches nothing would pass.
  set_tests_properties(deep.${name} PROPERTIES
    LABELS deep
    COST 100
    TIMEOUT 900
    FAIL_REGULAR_EXPRESSION "Running 0 tests"
    ENVIRONMENT "DIFFERENTIAL_DEPTH=deep;DIFFERENTIAL_CASES=200000")
endfunction()

testcommandlineparser_add_deep_test(tokensAfterTheProgramName differential_tests
  ExhaustiveTokens.EveryListAfterTheProgramName)
testcommandlineparser_add_deep_test(tokensWithAnyProgramName differential_tests
  ExhaustiveTokens.EveryListWithAnythingAsTheProgramName)
testcommandlineparser_add_deep_test(tokensInSeveralSources differential_tests
  ExhaustiveTokens.EveryListSpread*)
testcommandlineparser_add_deep_test(options differential_tests
  ExhaustiveTokens.EveryPair*:ExhaustiveTokens.EveryLength*)
testcommandlineparser_add_deep_test(variableBefore differential_tests
  ExhaustiveVariables.EveryTextBeforeTheCommandLine)
testcommandlineparser_add_deep_test(variableAfter differential_tests
  ExhaustiveVariables.EveryTextAfterTheCommandLine)
testcommandlineparser_add_deep_test(otherVariable differential_tests
  ExhaustiveVariables.EveryTextInAVariableOfTheCallersChoice)
testcommandlineparser_add_deep_test(transportLists differential_tests ExhaustiveTransport.EveryList*)
testcommandlineparser_add_deep_test(transportVariables differential_tests
  ExhaustiveTransport.EveryMix*:ExhaustiveTransport.EverySet*)
testcommandlineparser_add_deep_test(entryForms differential_tests ExhaustiveWide.*)
testcommandlineparser_add_deep_test(random differential_tests RandomScenarios.*)
testcommandlineparser_add_deep_test(functions differential_internal_tests
  ExhaustiveFunctions.*:ExhaustiveTokenKinds.*)
testcommandlineparser_add_deep_test(registry differential_internal_tests Mode/ExhaustiveRegistry.*)
