# The functions of the platform that the library calls are defined in the test program itself, which the
# flat namespace of ELF makes the library use.
if(NOT APPLE)
  testcommandlineparser_add_tests(order_of_effects_tests Orvex::testcommandlineparser
    allocation_hook.cpp
    application_directory_failures_test.cpp
    exhausted_memory_test.cpp
    interposed_functions.cpp
    order_of_effects_test.cpp
  )
  target_link_libraries(order_of_effects_tests PRIVATE ${CMAKE_DL_LIBS})
  target_compile_options(order_of_effects_tests PRIVATE -U_FORTIFY_SOURCE)
  set_target_properties(order_of_effects_tests PROPERTIES ENABLE_EXPORTS ON)
endif()
