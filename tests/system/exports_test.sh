#!/usr/bin/env bash
# Compares the dynamic symbols that the library defines with the list of its platform, and the lists of both platforms with
# each other: apart from the standard library's inline namespace and ABI tag, they name the same functions.
# Usage: exports_test.sh NM LIBRARY linux|macos LINUX-LIST MACOS-LIST
set -euo pipefail
export LC_ALL=C

plain() {
    c++filt | sed -e 's/\[abi:cxx11\]//g' -e 's/std::__cxx11::/std::/g' -e 's/std::__1::/std::/g' | sort
}

linux() {
    cat "$1"
}

macos() {
    sed 's/^_//' "$2" # every symbol has one more underscore there
}

flags='-D --defined-only --format=posix' prefix=
if [ "$(uname -s)" = Darwin ]; then
    flags=-gjU prefix=_
fi

# A line that begins with "-" is missing from the library; one that begins with "+" is not in the list.
diff -u <("$3" "$4" "$5") <("$1" $flags "$2" | cut -d ' ' -f 1 | sed "s/^$prefix//" | sort)
diff -u <(linux "$4" "$5" | plain) <(macos "$4" "$5" | plain)
