# Tests of the installed package and of the source tree as a part of other projects. Each one works in a
# temporary directory of its own, with the compilers and flags of this build: a library that was built
# with a sanitizer needs programs that were built with it, too.

include(GNUInstallDirs)

function(testcommandlineparser_add_package_test name)
  add_test(NAME package.${name} COMMAND bash ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${name}_test.sh)
  set(environment
    PACKAGE_SOURCE=${PROJECT_SOURCE_DIR}
    PACKAGE_BUILD=${PROJECT_BINARY_DIR}
    PACKAGE_CONFIG=$<CONFIG>
    PACKAGE_INCLUDEDIR=${CMAKE_INSTALL_INCLUDEDIR}
    PACKAGE_LIBDIR=${CMAKE_INSTALL_LIBDIR}
    PACKAGE_LIBRARY=$<TARGET_FILE_NAME:testcommandlineparser>
    PACKAGE_VERSION_LINK=$<TARGET_SONAME_FILE_NAME:testcommandlineparser>
    PACKAGE_NAME_LINK=$<TARGET_LINKER_FILE_NAME:testcommandlineparser>
    PACKAGE_VERSION=${PROJECT_VERSION}
    CC=${CMAKE_C_COMPILER}
    CXX=${CMAKE_CXX_COMPILER}
    CFLAGS=${CMAKE_C_FLAGS}
    CXXFLAGS=${CMAKE_CXX_FLAGS}
    LDFLAGS=${CMAKE_EXE_LINKER_FLAGS}
    CMAKE_GENERATOR=${CMAKE_GENERATOR}
    CMAKE_BUILD_PARALLEL_LEVEL=1)
  set_tests_properties(package.${name} PROPERTIES
    ENVIRONMENT "${environment}" LABELS "package;${ARGN}" TIMEOUT 600)
endfunction()

testcommandlineparser_add_package_test(components)
testcommandlineparser_add_package_test(find_package)
testcommandlineparser_add_package_test(pkg_config)
testcommandlineparser_add_package_test(readme_snippets)
testcommandlineparser_add_package_test(sdk_layout)
testcommandlineparser_add_package_test(source_tree)
testcommandlineparser_add_package_test(doxygen deep)
if(TESTCOMMANDLINEPARSER_BUILD_TOOLS AND NOT APPLE)
  testcommandlineparser_add_package_test(tools)
endif()
