#!/usr/bin/env bash
# `cpack -G TGZ` makes one archive for each component. Unpacked into one directory, they are a stripped installation.
source "$(dirname "$0")/package.sh"

make_packages TGZ
expect_equal 'each component has an archive' $'development\nruntime\ntools' \
    "$(ls "$packages" | sed -n "s/^testcommandlineparser-$PACKAGE_VERSION-.*-\([a-z]*\)\.tar\.gz\$/\1/p")"
mkdir "$work/unpacked"
for archive in "$packages"/*; do
    tar -xzf "$archive" -C "$work/unpacked"
done

install_to "$work/installed" --strip
diff -r "$work/installed" "$work/unpacked" || fail 'the archives hold what is installed'
"$work/unpacked/bin/show_arguments" -o result.txt >"$work/output" || fail 'show_arguments runs'
