# Installation in three components, all relocatable: runtime (the library), development (headers, CMake package,
# pkg-config file, examples) and tools. A fourth, sdk, is installed only on request: the library at its location inside
# the SDK's framework bundle.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/testcommandlineparser)

install(TARGETS testcommandlineparser
  EXPORT testcommandlineparserTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(FILES
  ${PROJECT_SOURCE_DIR}/include/OrvexTestCommandLineParser.h
  ${PROJECT_SOURCE_DIR}/include/OrvexTestCommandLineParserC.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

install(EXPORT testcommandlineparserTargets
  FILE testcommandlineparserConfig.cmake NAMESPACE Orvex::
  DESTINATION ${package_dir} COMPONENT development)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/testcommandlineparserConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/testcommandlineparserConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

# Relative paths, so that the pkg-config file stays correct when the prefix is moved.
file(RELATIVE_PATH pkgconfig_to_prefix
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
file(RELATIVE_PATH prefix_to_lib ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH prefix_to_include ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
list(TRANSFORM testcommandlineparser_definitions PREPEND " -D" OUTPUT_VARIABLE pkgconfig_definitions)
configure_file(${PROJECT_SOURCE_DIR}/cmake/testcommandlineparser.pc.in testcommandlineparser.pc.in @ONLY)
# The name of the library can differ between configurations.
file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/pkgconfig/$<CONFIG>/testcommandlineparser.pc
  INPUT ${CMAKE_CURRENT_BINARY_DIR}/testcommandlineparser.pc.in)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/pkgconfig/$<CONFIG>/testcommandlineparser.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
# /usr and /usr/local are not moved, so write them as absolute paths: pkg-config omits the compiler's default
# directories only if they are spelled that way. Check the prefix at installation time, because it can differ from the
# configured one.
install(CODE "
  if(CMAKE_INSTALL_PREFIX MATCHES \"^/usr(/local)?$\")
    set(file \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${prefix_to_lib}/pkgconfig/testcommandlineparser.pc\")
    file(READ \"\${file}\" text)
    string(REGEX REPLACE \"^prefix=[^\\n]*\" \"prefix=\${CMAKE_INSTALL_PREFIX}\" text \"\${text}\")
    file(WRITE \"\${file}\" \"\${text}\")
  endif()"
  COMPONENT development)

install(FILES
  ${PROJECT_SOURCE_DIR}/examples/c_client.c
  ${PROJECT_SOURCE_DIR}/examples/camera_suite.cpp
  ${PROJECT_SOURCE_DIR}/examples/doctest_suite.cpp
  ${PROJECT_SOURCE_DIR}/examples/python_client.py
  DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/testcommandlineparser/examples COMPONENT development)

if(TESTCOMMANDLINEPARSER_BUILD_TOOLS)
  # Locate the library relative to the program, so that the prefix can move.
  file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(show_arguments PROPERTIES INSTALL_RPATH
    $<IF:$<BOOL:${APPLE}>,@executable_path,$ORIGIN>/${bin_to_lib})
  install(TARGETS show_arguments RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/tools/show_arguments/show_arguments.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()

set(framework Frameworks/orvex.framework)
install(TARGETS testcommandlineparser
  LIBRARY DESTINATION ${framework}/Versions/A/Libraries COMPONENT sdk EXCLUDE_FROM_ALL NAMELINK_SKIP)
install(CODE "
  set(framework \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${framework}\")
  file(CREATE_LINK A \"\${framework}/Versions/Current\" SYMBOLIC)
  file(CREATE_LINK Versions/Current/Libraries \"\${framework}/Libraries\" SYMBOLIC)"
  COMPONENT sdk EXCLUDE_FROM_ALL)
