# The parser holds standard containers by value, so that a program must use the library's standard library. On Linux
# there is a choice: a library that was built with libc++ says so in a macro, and the header compares it with the
# program's.

set(testcommandlineparser_definitions "")
if(NOT APPLE)
  include(CheckCXXSymbolExists)
  check_cxx_symbol_exists(_LIBCPP_VERSION cstddef TESTCOMMANDLINEPARSER_USES_LIBCXX)
  # An outer project may have chosen libc++ by add_compile_options, which the check does not see.
  get_directory_property(options COMPILE_OPTIONS)
  if(TESTCOMMANDLINEPARSER_USES_LIBCXX OR options MATCHES "-stdlib=libc\\+\\+")
    set(testcommandlineparser_definitions ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_LIBCXX)
  endif()
endif()
