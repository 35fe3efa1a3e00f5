#!/usr/bin/env bash
# Outside programs that are held to strict warnings are compiled and linked with what pkg-config says
# about the package after its prefix has moved.
source "$(dirname "$0")/package.sh"

install_moved
export PKG_CONFIG_LIBDIR=$prefix/$PACKAGE_LIBDIR/pkgconfig

expect_equal 'the version is that of the library' "$PACKAGE_VERSION" "$(pkg-config --modversion testcommandlineparser)"
expect_equal 'the prefix moves with the package' "$prefix" \
    "$(cd "$(pkg-config --variable=prefix testcommandlineparser)" && pwd -P)"

warnings='-Wall -Wextra -pedantic -Werror'
compile_flags=$(pkg-config --cflags testcommandlineparser)
link_flags="$(pkg-config --libs testcommandlineparser) -Wl,-rpath,$prefix/$PACKAGE_LIBDIR"

# The flags are lists of words. compile COMPILER AND FLAGS...
compile() {
    quietly "$@" $warnings $compile_flags ${LDFLAGS:-} $link_flags
}

for standard in c99 c11; do
    compile "$CC" ${CFLAGS:-} "-std=$standard" -Wstrict-prototypes "$consumers/main.c" -o "$work/$standard"
    expect_consumer_works "$work/$standard"
done
for standard in c++11 c++20; do
    compile "$CXX" ${CXXFLAGS:-} "-std=$standard" "$consumers/main.cpp" -o "$work/$standard"
    expect_consumer_works "$work/$standard"
done

# The C header is for C++ programs, too.
compile "$CXX" ${CXXFLAGS:-} -std=c++11 -x c++ "$consumers/main.c" -x none -o "$work/c_header_in_cpp"
expect_consumer_works "$work/c_header_in_cpp"
