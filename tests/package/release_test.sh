#!/usr/bin/env bash
# What the release preset installs works for a program that finds it as a package, does not depend on the directory
# that it was built in, and is hardened: read-only relocations, immediate binding and stack protectors.
source "$(dirname "$0")/package.sh"

install_moved
build_project "$consumers/find_package" "-DCMAKE_PREFIX_PATH=$prefix"
expect_consumer_works "$built/consumer"

for file in "$prefix"/lib*/libtestcommandlineparser.so.0 "$prefix/bin/show_arguments"; do
    headers=$(readelf --wide --file-header --program-headers --dynamic "$file")
    grep -qE 'Type: +DYN' <<<"$headers" || fail "$file is position-independent"
    grep -q GNU_RELRO <<<"$headers" || fail "$file has read-only relocations"
    grep -q BIND_NOW <<<"$headers" || fail "$file binds its symbols at load time"
    grep -q __stack_chk_fail <<<"$(nm --dynamic "$file")" || fail "$file has stack protectors"
done
elsewhere=$work/a_build_directory_with_a_longer_name
quietly cmake -S "$PACKAGE_SOURCE" --preset release -B "$elsewhere"
quietly cmake --build "$elsewhere"
for file in src/libtestcommandlineparser.so.0 tools/show_arguments; do
    cmp "$PACKAGE_BUILD/$file" "$elsewhere/$file" || fail "$file is the same in every build directory"
done
"$prefix/bin/show_arguments" -o result.txt | grep -qE 'outputFilename +result\.txt$' || fail 'show_arguments runs'
