#!/usr/bin/env bash
# The installed show_arguments finds the installed library, also after both have moved.
source "$(dirname "$0")/package.sh"

install_to "$work/first" --component runtime
install_moved --component tools
program=$prefix/bin/show_arguments

"$program" -o result.txt >"$work/output"
grep -qE '^ +outputFilename +result\.txt$' "$work/output" || fail 'show_arguments shows what it was given'
[ "$(ldd "$program" | awk '/libtestcommandlineparser/ { print $3 }' | xargs realpath)" = \
    "$(realpath "$prefix/$PACKAGE_LIBDIR/$PACKAGE_LIBRARY")" ] || fail 'it is run with the library beside it'
