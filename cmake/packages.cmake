# Packages of the components runtime, development and tools. In the build directory, `cpack -G TGZ` makes archives that
# can be unpacked anywhere, and `cpack -G DEB` makes Debian packages.

set(CPACK_GENERATOR TGZ)
set(CPACK_COMPONENTS_ALL runtime development)
if(TESTCOMMANDLINEPARSER_BUILD_TOOLS)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/package_contents.cmake)
# A universal build for macOS has no single architecture.
if(NOT APPLE)
  set(CPACK_SYSTEM_NAME ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
endif()

# The name and the address are placeholders.
set(CPACK_PACKAGE_VENDOR Orvex)
set(CPACK_PACKAGE_CONTACT "Orvex test maintainers <maintainers@orvex.invalid>")
# Each package has a synopsis of its own, the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

file(WRITE ${PROJECT_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
# Debian packages install to /usr, regardless of the configured prefix.
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# Later versions add functions and remove none.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg-shlibdeps looks here for the library that show_arguments links.
list(TRANSFORM CMAKE_CONFIGURATION_TYPES PREPEND ${PROJECT_BINARY_DIR}/src/
  OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS)
list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libtestcommandlineparser0)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "command-line parser for Orvex test programs (library)
The automated test programs of the Orvex camera SDK hand their arguments to
this library. It parses them, together with those in two environment variables,
and sets the environment variables of the SDK and of the test session.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtestcommandlineparser-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "command-line parser for Orvex test programs (development files)
The files needed to build test programs with the library: the headers for C++
and C, the CMake package, the pkg-config file and the examples.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME testcommandlineparser-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "show how Orvex test programs interpret their arguments
The program show_arguments shows how a test program interprets its arguments
and those in two environment variables, and why.")

# With the prefix /usr, GNUInstallDirs chooses Debian's multiarch directory, so packages for several architectures can
# be installed together. Only CMake 3.31 and later write this field.
if(CMAKE_LIBRARY_ARCHITECTURE AND CMAKE_INSTALL_LIBDIR STREQUAL "lib/${CMAKE_LIBRARY_ARCHITECTURE}")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_MULTIARCH same)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_MULTIARCH same)
endif()

include(CPack)
