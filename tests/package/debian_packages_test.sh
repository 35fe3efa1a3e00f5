#!/usr/bin/env bash
# `cpack -G DEB` makes Debian packages for the prefix /usr, whatever prefix the build was configured with. An outside
# project can use them from a directory that they are unpacked into, and the tool runs.
source "$(dirname "$0")/package.sh"

make_packages DEB
architecture=$(dpkg --print-architecture)
runtime=$packages/libtestcommandlineparser0_${PACKAGE_VERSION}_$architecture.deb
development=$packages/libtestcommandlineparser-dev_${PACKAGE_VERSION}_$architecture.deb
tools=$packages/testcommandlineparser-tools_${PACKAGE_VERSION}_$architecture.deb
expect_equal 'each component has a package' "$(printf '%s\n' "$development" "$runtime" "$tools")" \
    "$(printf '%s\n' "$packages"/*)"

# depends_on PACKAGE REGEX
depends_on() {
    dpkg-deb -f "$1" Depends | tr ',' '\n' | grep -qE "^ *$2" || fail "$(basename "$1") depends on $2"
}
same_version="libtestcommandlineparser0 \(= ${PACKAGE_VERSION//./\\.}\)"
depends_on "$runtime" 'libc6 '
depends_on "$development" "$same_version"
depends_on "$tools" "$same_version"
depends_on "$tools" 'libc6 '
expect_equal 'programs depend on this version of the library or a later one' \
    "libtestcommandlineparser 0 libtestcommandlineparser0 (>= $PACKAGE_VERSION)" "$(dpkg-deb -I "$runtime" shlibs)"
expect_equal 'the installation updates the cache of the dynamic linker' 'activate-noawait ldconfig' \
    "$(dpkg-deb -I "$runtime" triggers)"

root=$work/root
for package in "$runtime" "$development" "$tools"; do
    dpkg-deb -x "$package" "$root"
done
libraries=$root/usr/$PACKAGE_LIBDIR
expect_equal 'the library is not executable' 644 "$(stat -c %a "$libraries/$PACKAGE_LIBRARY")"

# Without the root, as on a machine where the packages are installed.
export PKG_CONFIG_LIBDIR=$libraries/pkgconfig
expect_equal 'no directory of /usr is named' '-ltestcommandlineparser' \
    "$(pkg-config --cflags-only-I --libs testcommandlineparser | xargs)"
export PKG_CONFIG_SYSROOT_DIR=$root
quietly "$CC" ${CFLAGS:-} "$consumers/main.c" -o "$work/program" ${LDFLAGS:-} \
    $(pkg-config --cflags --libs testcommandlineparser) "-Wl,-rpath,$libraries"
expect_consumer_works "$work/program"
build_project "$consumers/find_package" "-DCMAKE_PREFIX_PATH=$root/usr"
expect_consumer_works "$built/consumer"

program=$root/usr/bin/show_arguments
"$program" -o result.txt >"$work/output" || fail 'show_arguments runs'
expect_equal 'show_arguments finds the library of the package' "$(realpath "$libraries/$PACKAGE_LIBRARY")" \
    "$(ldd "$program" | awk '/libtestcommandlineparser/ { print $3 }' | xargs realpath)"
