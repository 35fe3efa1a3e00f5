# The parser holds standard containers by value, so a program must use the same standard library as the library. On
# Linux, that can be libstdc++ or libc++: if the library was built with libc++, its target defines a macro, and the
# header compares that with the program's standard library.

set(testcommandlineparser_definitions "")
if(NOT APPLE)
  include(CheckCXXSymbolExists)
  check_cxx_symbol_exists(_LIBCPP_VERSION cstddef TESTCOMMANDLINEPARSER_USES_LIBCXX)
  # An outer project may have chosen libc++ with add_compile_options, which the check ignores.
  get_directory_property(options COMPILE_OPTIONS)
  if(TESTCOMMANDLINEPARSER_USES_LIBCXX OR options MATCHES "-stdlib=libc\\+\\+")
    set(testcommandlineparser_definitions ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_LIBCXX)
  endif()
endif()
