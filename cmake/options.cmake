# Chooses the parts to build and the warnings.

option(TESTCOMMANDLINEPARSER_STRICT "Treat compiler warnings as errors" OFF)
set(TESTCOMMANDLINEPARSER_GOOGLETEST_SOURCE "" CACHE PATH
  "GoogleTest's source directory, to build it with the project instead of using an installed one")

# GoogleTest must be built for the same standard library and platform as the examples and tests.
if(TESTCOMMANDLINEPARSER_GOOGLETEST_SOURCE)
  block()
    set(INSTALL_GTEST OFF)
    # Its matchers for std::string_view, which the tests use, require C++17.
    set(CMAKE_CXX_STANDARD 17)
    add_subdirectory(${TESTCOMMANDLINEPARSER_GOOGLETEST_SOURCE} googletest EXCLUDE_FROM_ALL)
  endblock()
  set(GTest_FOUND TRUE)
endif()

set(built library)
set(leftOut "")

# testcommandlineparser_part(NAME DEFAULT PACKAGES...), each package as "CMake name/Debian name/Homebrew name"
#
# Sets TESTCOMMANDLINEPARSER_BUILD_<NAME> unless it is already defined. If a package is missing, a part that would be
# built by default is left out; for a part that was requested, configuration fails. The default is not cached: once the
# package is installed, the next configuration builds the part.
function(testcommandlineparser_part name default)
  set(option TESTCOMMANDLINEPARSER_BUILD_${name})
  string(TOLOWER ${name} part)
  # An outer project may use the same variable names.
  set(missing "")
  set(isDefault FALSE)
  if(NOT DEFINED ${option})
    set(${option} ${default})
    set(isDefault TRUE)
  endif()
  if(${option})
    foreach(package IN LISTS ARGN)
      string(REPLACE "/" ";" names ${package})
      list(POP_FRONT names package debian homebrew)
      if(NOT ${package}_FOUND)
        find_package(${package} QUIET)
      endif()
      if(NOT ${package}_FOUND)
        list(APPEND missing "${package} (Debian ${debian}, Homebrew ${homebrew})")
      endif()
    endforeach()
    list(JOIN missing ", " missing)
    if(NOT missing)
      list(APPEND built ${part})
    elseif(isDefault)
      set(${option} OFF)
      list(APPEND leftOut "${part}, missing ${missing}")
    else()
      message(FATAL_ERROR
        "${option} needs packages that were not found: ${missing}. Install them or configure with -D${option}=OFF.")
    endif()
  endif()
  return(PROPAGATE ${option} built leftOut)
endfunction()

set(googletest "GTest/libgtest-dev libgmock-dev/googletest")
testcommandlineparser_part(TOOLS ${PROJECT_IS_TOP_LEVEL}
  nlohmann_json/nlohmann-json3-dev/nlohmann-json fmt/libfmt-dev/fmt)
testcommandlineparser_part(EXAMPLES OFF ${googletest})
testcommandlineparser_part(TESTS OFF ${googletest})
testcommandlineparser_part(BENCHMARKS OFF benchmark/libbenchmark-dev/google-benchmark)

if(PROJECT_IS_TOP_LEVEL)
  list(JOIN built ", " built)
  list(JOIN leftOut "; " leftOut)
  if(leftOut)
    string(PREPEND leftOut ". Left out: ")
  endif()
  message(STATUS "Building: ${built}${leftOut}")
endif()

# Warnings for this project's own directories only; they are not propagated to consumers.
set(testcommandlineparser_warnings -Wall -Wextra -Wpedantic)
if(TESTCOMMANDLINEPARSER_STRICT)
  list(APPEND testcommandlineparser_warnings -Werror)
endif()
