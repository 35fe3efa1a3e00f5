#!/usr/bin/env bash
# Compares the dynamic symbols that the library defines with the list of those that it may define.
# Usage: exports_test.sh NM LIBRARY LIST
set -euo pipefail
export LC_ALL=C

nm=$1
library=$2
list=$3

defined=$("$nm" -D --defined-only --format=posix "$library" | cut -d ' ' -f 1 | sort)
if [ -z "$defined" ]; then
    echo "$library defines no symbols" >&2
    exit 1
fi
# A line that begins with "-" is missing from the library; one that begins with "+" is too much. On macOS
# every symbol has one more underscore in front.
if [[ $list == *.macos ]]; then
    diff -u <(sed 's/^_//' "$list") <(echo "$defined")
else
    diff -u "$list" <(echo "$defined")
fi
