#!/usr/bin/env bash
# The library exports the same functions on both platforms, whatever the standard library's inline
# namespace and ABI tag make of their names.
# Usage: export_lists_test.sh LINUX-LIST MACOS-LIST
set -euo pipefail
export LC_ALL=C

plain() {
    c++filt | sed -e 's/\[abi:cxx11\]//g' -e 's/std::__cxx11::/std::/g' -e 's/std::__1::/std::/g' | sort
}

[ -s "$1" ]
diff -u <(plain <"$1") <(sed 's/^_//' "$2" | plain)
