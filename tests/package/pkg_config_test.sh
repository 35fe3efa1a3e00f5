#!/usr/bin/env bash
# Outside programs compile, with strict warnings, and link with pkg-config's flags after the prefix has moved, and run
# where only the runtime component is installed.
source "$(dirname "$0")/package.sh"

install_moved
export PKG_CONFIG_LIBDIR=$prefix/$PACKAGE_LIBDIR/pkgconfig

expect_equal 'the version is that of the library' "$PACKAGE_VERSION" "$(pkg-config --modversion testcommandlineparser)"
expect_equal 'the prefix moves with the package' "$prefix" \
    "$(cd "$(pkg-config --variable=prefix testcommandlineparser)" && pwd -P)"

warnings='-Wall -Wextra -pedantic -Werror'
compile_flags=$(pkg-config --cflags testcommandlineparser)
link_flags="$(pkg-config --libs testcommandlineparser) -Wl,-rpath,$prefix/$PACKAGE_LIBDIR"

# Expects a valid pkg-config file. expect_valid DIRECTORY
expect_valid() {
    [ -z "$(PKG_CONFIG_LIBDIR=$1 pkg-config --validate testcommandlineparser 2>&1)" ] || fail "the file in $1 is valid"
}
expect_valid "$PKG_CONFIG_LIBDIR"

# Compiles and links with flags that are lists of words. compile COMPILER AND FLAGS...
compile() {
    quietly "$@" $warnings $compile_flags ${LDFLAGS:-} $link_flags
}

compile "$CC" ${CFLAGS:-} -std=c99 -Wstrict-prototypes "$consumers/main.c" -o "$work/c99"
compile "$CXX" ${CXXFLAGS:-} -std=c++11 "$consumers/main.cpp" -o "$work/c++11"
# C++ programs can use the C header, too.
compile "$CXX" ${CXXFLAGS:-} -std=c++11 -x c++ "$consumers/main.c" -x none -o "$work/c_header_in_c++"
rm -r "$prefix"
install_to "$prefix" --component runtime
for program in c99 c++11 c_header_in_c++; do
    expect_consumer_works "$work/$program"
done

# An absolute library directory stays where it is.
absolute=$work/absolute
quietly cmake -S "$PACKAGE_SOURCE" -B "$absolute/build" -DCMAKE_BUILD_TYPE=Release -DTESTCOMMANDLINEPARSER_BUILD_TOOLS=OFF \
    "-DCMAKE_INSTALL_PREFIX=$absolute/prefix" "-DCMAKE_INSTALL_LIBDIR=$absolute/lib"
mkdir -p "$absolute/prefix" "$absolute/lib/pkgconfig"
find "$absolute/build" -name testcommandlineparser.pc -exec cp {} "$absolute/lib/pkgconfig" \;
expect_equal 'libdir is the absolute library directory' "$absolute/lib" \
    "$(cd "$(PKG_CONFIG_LIBDIR=$absolute/lib/pkgconfig pkg-config --variable=libdir testcommandlineparser)" && pwd -P)"

# The two prefixes that do not move are absolute, whatever prefix the build was configured with. The compiler searches
# /usr anyway.
# flags_in PREFIX OPTION...
flags_in() {
    PKG_CONFIG_LIBDIR=$work/root$1/$PACKAGE_LIBDIR/pkgconfig pkg-config "${@:2}" testcommandlineparser | xargs
}
for prefix in /usr /usr/local; do
    DESTDIR=$work/root install_to "$prefix"
    expect_valid "$work/root$prefix/$PACKAGE_LIBDIR/pkgconfig"
    expect_equal "the prefix $prefix is written as it is" "$prefix" "$(flags_in "$prefix" --variable=prefix)"
    expect_equal "the headers of $prefix" "$prefix/$PACKAGE_INCLUDEDIR" "$(flags_in "$prefix" --variable=includedir)"
    expect_equal "the libraries of $prefix" "$prefix/$PACKAGE_LIBDIR" "$(flags_in "$prefix" --variable=libdir)"
done
expect_equal 'no directory of /usr is named' '-ltestcommandlineparser' "$(flags_in /usr --cflags-only-I --libs)"
