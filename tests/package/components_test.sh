#!/usr/bin/env bash
# What each component installs.
source "$(dirname "$0")/package.sh"

# Lists the files, without the build type that one of the names contains. files_in PREFIX
files_in() {
    (cd "$1" && find . ! -type d | sed 's/Config-[a-z]*\.cmake$/Config-TYPE.cmake/' | sort)
}

lines() {
    printf './%s\n' "$@" | sort -u
}

install_to "$work/runtime" --component runtime
expect_equal 'runtime holds only the library with its version link' \
    "$(lines "$PACKAGE_LIBDIR/$PACKAGE_LIBRARY" "$PACKAGE_LIBDIR/$PACKAGE_VERSION_LINK")" \
    "$(files_in "$work/runtime")"
[ -f "$work/runtime/$PACKAGE_LIBDIR/$PACKAGE_VERSION_LINK" ] || fail 'the version link leads to the library'

install_to "$work/development" --component development
package_dir=$PACKAGE_LIBDIR/cmake/testcommandlineparser
expect_equal 'development holds headers, name link, CMake package, pkg-config file and examples' \
    "$(lines "$PACKAGE_INCLUDEDIR/OrvexTestCommandLineParser.h" \
        "$PACKAGE_INCLUDEDIR/OrvexTestCommandLineParserC.h" \
        "$PACKAGE_LIBDIR/$PACKAGE_NAME_LINK" \
        "$package_dir/testcommandlineparserConfig.cmake" \
        "$package_dir/testcommandlineparserConfig-TYPE.cmake" \
        "$package_dir/testcommandlineparserConfigVersion.cmake" \
        "$PACKAGE_LIBDIR/pkgconfig/testcommandlineparser.pc" \
        share/doc/testcommandlineparser/examples/{c_client.c,camera_suite.cpp,doctest_suite.cpp,python_client.py})" \
    "$(files_in "$work/development")"

install_to "$work/all"
[ ! -e "$work/all/Frameworks" ] || fail 'the sdk component is installed only on request'
