#!/usr/bin/env bash
# What the release preset installs works for a program that finds it as a package, and is hardened: read-only
# relocations, bound at the start, and stack protectors.
source "$(dirname "$0")/package.sh"

install_moved
build_project "$consumers/find_package" "-DCMAKE_PREFIX_PATH=$prefix"
expect_consumer_works "$built/consumer"

for file in "$prefix"/lib*/libtestcommandlineparser.so.0 "$prefix/bin/show_arguments"; do
    headers=$(readelf --wide --file-header --program-headers --dynamic "$file")
    grep -qE 'Type: +DYN' <<<"$headers" || fail "$file is position-independent"
    grep -q GNU_RELRO <<<"$headers" || fail "$file has read-only relocations"
    grep -q BIND_NOW <<<"$headers" || fail "$file binds its symbols at the start"
    grep -q __stack_chk_fail <<<"$(nm --dynamic "$file")" || fail "$file has stack protectors"
done
"$prefix/bin/show_arguments" -o result.txt | grep -qE 'outputFilename +result\.txt$' || fail 'show_arguments runs'
