#!/usr/bin/env bash
# `cpack -G TGZ` makes one archive for each component. An outside project can use them from any directory that they are
# unpacked into, and the tool runs.
source "$(dirname "$0")/package.sh"

make_packages TGZ
expect_equal 'each component has an archive' $'development\nruntime\ntools' \
    "$(ls "$packages" | sed -n "s/^testcommandlineparser-$PACKAGE_VERSION-.*-\([a-z]*\)\.tar\.gz\$/\1/p")"
prefix=$work/unpacked
mkdir "$prefix"
for archive in "$packages"/*; do
    tar -xzf "$archive" -C "$prefix"
done

export PKG_CONFIG_LIBDIR=$prefix/$PACKAGE_LIBDIR/pkgconfig
expect_equal 'pkg-config finds the headers' "$prefix/$PACKAGE_INCLUDEDIR" \
    "$(realpath "$(pkg-config --variable=includedir testcommandlineparser)")"
build_project "$consumers/find_package" "-DCMAKE_PREFIX_PATH=$prefix"
rm -r "$PKG_CONFIG_LIBDIR"
expect_consumer_works "$built/consumer"
"$prefix/bin/show_arguments" -o result.txt >"$work/output" || fail 'show_arguments runs'
