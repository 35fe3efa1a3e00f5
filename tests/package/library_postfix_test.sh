#!/usr/bin/env bash
# The pkg-config file names the library that was built, even if the name differs between configurations.
source "$(dirname "$0")/package.sh"

build_project "$PACKAGE_SOURCE" -G 'Ninja Multi-Config' -DCMAKE_DEBUG_POSTFIX=d \
    -DTESTCOMMANDLINEPARSER_BUILD_TOOLS=OFF
quietly cmake --build "$built" --config Release

# expect_library_of CONFIGURATION NAME
expect_library_of() {
    local prefix=$work/$1
    PACKAGE_BUILD=$built PACKAGE_CONFIG=$1 install_to "$prefix"
    export PKG_CONFIG_LIBDIR=$prefix/$PACKAGE_LIBDIR/pkgconfig
    expect_equal "the pkg-config file of $1 names the library of $1" "-l$2" "$(pkg-config --libs-only-l testcommandlineparser | xargs)"
    quietly "$CC" ${CFLAGS:-} "$consumers/main.c" -o "$work/program" ${LDFLAGS:-} \
        $(pkg-config --cflags --libs testcommandlineparser) "-Wl,-rpath,$prefix/$PACKAGE_LIBDIR"
    expect_consumer_works "$work/program"
}

expect_library_of Debug testcommandlineparserd
expect_library_of Release testcommandlineparser
