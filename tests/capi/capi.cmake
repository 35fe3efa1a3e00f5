# The tests of the C interface that need a program of their own.

find_package(Threads REQUIRED)

set(capi ${CMAKE_CURRENT_LIST_DIR})

add_executable(c_interface_test ${capi}/c_interface_test.c)
target_link_libraries(c_interface_test PRIVATE Orvex::testcommandlineparser)
set_target_properties(c_interface_test PROPERTIES C_STANDARD 99 C_STANDARD_REQUIRED ON C_EXTENSIONS OFF)
testcommandlineparser_set_warnings(c_interface_test)
add_test(NAME CInterface.FromC COMMAND c_interface_test)
set_tests_properties(CInterface.FromC PROPERTIES ENVIRONMENT_MODIFICATION
  "ORVEX_TEST_ARGS=unset:;_ORVEX_TEST_ARGS_=unset:")

testcommandlineparser_add_tests(information_copy_tests Orvex::testcommandlineparser
  ${capi}/information_copy_test.cpp)

# Both replace the global operator new.
testcommandlineparser_add_tests(first_call_tests Orvex::testcommandlineparser
  ${capi}/first_call_test.cpp ${capi}/exception_test.cpp ${capi}/../system/allocation_hook.cpp)
target_link_libraries(first_call_tests PRIVATE Threads::Threads)
