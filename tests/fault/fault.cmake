# Tests that make memory run out and platform functions fail. They replace functions of the C library
# and operator new for all libraries of the process, which works where symbols are looked up by name
# alone and the C library is glibc.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  return()
endif()

testcommandlineparser_add_tests(fault_tests Orvex::testcommandlineparser
  fault/member_failure_test.cpp
  fault/parse_allocation_test.cpp
  fault/parse_scenario.cpp
  fault/platform_failure_test.cpp
  support/fault_injection.cpp
)

testcommandlineparser_add_tests(internal_fault_tests testcommandlineparser_objects
  fault/internal_failure_test.cpp
  support/fault_injection.cpp
)

foreach(target fault_tests internal_fault_tests)
  target_link_libraries(${target} PRIVATE ${CMAKE_DL_LIBS})
  # The functions that are replaced must not have inline definitions, and must be seen by the libraries.
  target_compile_options(${target} PRIVATE -U_FORTIFY_SOURCE)
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
endforeach()
