#!/usr/bin/env bash
# lintian finds no error in the Debian packages of a release, except for the missing copyright file and Debian
# changelog. Everybody can read the installed files, whatever the umask was when the packages were made.
source "$(dirname "$0")/package.sh"

umask 077
build=$work/build
cd "$PACKAGE_SOURCE"
commands=$(grep '^    .*build/debian' docs/releasing.md)
quietly bash -ec "${commands//build\/debian/$build}"
quietly lintian --allow-root --fail-on error --suppress-tags no-copyright-file,no-changelog "$build"/*.deb

for package in "$build"/*.deb; do
    dpkg-deb -x "$package" "$work/root"
done
expect_equal 'everybody may read the directories' '' "$(find "$work/root" -mindepth 1 -type d ! -perm 755)"
libraries=$work/root/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)
expect_equal 'no directory of /usr is named' '-ltestcommandlineparser' \
    "$(PKG_CONFIG_LIBDIR=$libraries/pkgconfig pkg-config --cflags-only-I --libs testcommandlineparser | xargs)"
[ -e "$libraries/libtestcommandlineparser.so.0" ] || fail 'the library is in the directory of its architecture'
"$work/root/usr/bin/show_arguments" >"$work/output" || fail 'show_arguments runs'
