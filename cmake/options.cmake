# What is built beside the library. A part is on by default only when this is the top-level project and
# the package that the part needs is installed; a part that is asked for without its package is an error.

# The examples and the tests need a GoogleTest that was built for their standard library and platform.
set(TESTCOMMANDLINEPARSER_GOOGLETEST_SOURCE "" CACHE PATH
  "GoogleTest's source directory, to build it along instead of using an installed one")
if(TESTCOMMANDLINEPARSER_GOOGLETEST_SOURCE)
  set(INSTALL_GTEST OFF)
  add_subdirectory(${TESTCOMMANDLINEPARSER_GOOGLETEST_SOURCE} googletest EXCLUDE_FROM_ALL)
  set(GTest_FOUND TRUE)
endif()

function(testcommandlineparser_part name description package debian homebrew)
  set(default OFF)
  if(NOT ${package}_FOUND AND (PROJECT_IS_TOP_LEVEL OR ${name}))
    find_package(${package} QUIET)
  endif()
  if(PROJECT_IS_TOP_LEVEL AND ${package}_FOUND)
    set(default ON)
  endif()
  option(${name} "${description}" ${default})
  if(${name} AND NOT ${package}_FOUND)
    message(FATAL_ERROR
      "${name} needs ${package}, which was not found. Install it (Debian: ${debian}; Homebrew: "
      "${homebrew}) or configure with -D${name}=OFF.")
  endif()
endfunction()

testcommandlineparser_part(TESTCOMMANDLINEPARSER_BUILD_TOOLS
  "Build show_arguments" nlohmann_json nlohmann-json3-dev nlohmann-json)
testcommandlineparser_part(TESTCOMMANDLINEPARSER_BUILD_EXAMPLES
  "Build the examples" GTest "libgtest-dev and libgmock-dev" googletest)
testcommandlineparser_part(TESTCOMMANDLINEPARSER_BUILD_TESTS
  "Build the tests" GTest "libgtest-dev and libgmock-dev" googletest)
testcommandlineparser_part(TESTCOMMANDLINEPARSER_BUILD_BENCHMARKS
  "Build the benchmarks" benchmark libbenchmark-dev google-benchmark)
option(TESTCOMMANDLINEPARSER_STRICT "Treat compiler warnings as errors" OFF)

# The warnings that this project's own directories are held to; nothing of it reaches a consumer.
set(testcommandlineparser_warnings -Wall -Wextra -Wpedantic)
if(TESTCOMMANDLINEPARSER_STRICT)
  list(APPEND testcommandlineparser_warnings -Werror)
endif()
