#!/usr/bin/env bash
# The sdk component installs the library at its location in the SDK: a parse with DravikGTC sets the producer
# directories of the same SDK, even after the SDK has moved.
source "$(dirname "$0")/package.sh"

install_to "$work/first" --component sdk
install_moved --component sdk # over the links of an earlier installation
sdk=$prefix

libraries=$sdk/Frameworks/orvex.framework/Libraries
expect_equal 'the library lies in the current version of the framework' \
    "$sdk/Frameworks/orvex.framework/Versions/A/Libraries" "$(cd "$libraries" && pwd -P)"
expect_equal 'the sdk component holds only the library and its links' \
    "$(printf './Frameworks/orvex.framework/%s\n' Libraries Versions/Current "Versions/A/Libraries/$PACKAGE_LIBRARY" \
        "Versions/A/Libraries/$PACKAGE_VERSION_LINK" | sort -u)" \
    "$(cd "$sdk" && find . ! -type d | sort)"

mkdir -p "$libraries/gentlproducer/gtl" "$libraries/orvexCXP/bin" "$sdk/tests"
quietly "$CC" ${CFLAGS:-} "-I$PACKAGE_SOURCE/include" "$consumers/main.c" -o "$sdk/tests/program" ${LDFLAGS:-} \
    "$libraries/$PACKAGE_VERSION_LINK" "-Wl,-rpath,$libraries"
cd "$sdk/tests"

# Prints the resulting variable, one directory a line. producer_path TRANSPORT-LAYER
producer_path() {
    GENICAM_GENTL64_PATH=/earlier/gtl ./program -tl "$1" | tail -n 1 | tr : '\n'
}

paths=$(producer_path DravikGTC)
expect_equal 'the producer directories come before the old path' \
    "$libraries/gentlproducer/gtl"$'\n'"$libraries/orvexCXP/bin"$'\n/earlier/gtl' "$paths"
for directory in $(head -n 2 <<<"$paths"); do
    [ -d "$directory" ] || fail "$directory exists"
done

expect_equal 'other transport layers leave the path alone' /earlier/gtl "$(producer_path DravikUsb)"
