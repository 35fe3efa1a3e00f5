# Link rules of the macOS cross build. The linker is called directly, not through the compiler driver, so its options
# have no -Wl prefix.

foreach(lang C CXX)
  set(CMAKE_${lang}_VERBOSE_FLAG -v)
  set(CMAKE_${lang}_LINKER_WRAPPER_FLAG "")
  set(CMAKE_${lang}_LINKER_WRAPPER_FLAG_SEP "")
  set(CMAKE_${lang}_LINK_FLAGS "-headerpad_max_install_names")
  set(CMAKE_SHARED_LIBRARY_RUNTIME_${lang}_FLAG "-rpath ")
  set(CMAKE_SHARED_LIBRARY_CREATE_${lang}_FLAGS "-dylib -headerpad_max_install_names")
  set(CMAKE_${lang}_CREATE_SHARED_LIBRARY
    "${MACOS_LINK_START} <CMAKE_SHARED_LIBRARY_CREATE_${lang}_FLAGS> <LINK_FLAGS> -o <TARGET> <SONAME_FLAG> <TARGET_INSTALLNAME_DIR><TARGET_SONAME> <OBJECTS> <LINK_LIBRARIES> ${MACOS_LINK_END}")
  set(CMAKE_${lang}_LINK_EXECUTABLE
    "${MACOS_LINK_START} <CMAKE_${lang}_LINK_FLAGS> <LINK_FLAGS> -o <TARGET> <OBJECTS> <LINK_LIBRARIES> ${MACOS_LINK_END}")
endforeach()
