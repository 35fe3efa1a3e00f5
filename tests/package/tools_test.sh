#!/usr/bin/env bash
# The installed show_arguments finds the installed library, even after both have moved. Its manual page is installed and
# correct, and the examples in it work.
source "$(dirname "$0")/package.sh"

install_to "$work/first" --component runtime
install_moved --component tools
program=$prefix/bin/show_arguments

"$program" -o result.txt >"$work/output"
grep -qE '^ +outputFilename +result\.txt$' "$work/output" || fail 'show_arguments shows its arguments'
[ "$(ldd "$program" | awk '/libtestcommandlineparser/ { print $3 }' | xargs realpath)" = \
    "$(realpath "$prefix/$PACKAGE_LIBDIR/$PACKAGE_LIBRARY")" ] || fail 'show_arguments loads the library that was installed with it'

page=$(find "$prefix" -path '*/man1/show_arguments.1')
[ -n "$page" ] || fail 'the manual page is installed'
expect_equal 'mandoc finds no fault in the manual page' '' "$(mandoc -T lint "$page" 2>&1)"

sed -n 's/^\.Dl \$ //p' "$page" >"$work/examples"
expect_equal 'the manual page has two examples' 2 "$(wc -l <"$work/examples" | tr -d ' ')"
PATH=$prefix/bin:$PATH
while read -r example; do
    bash -c "set -o pipefail; $example" >"$work/output" || fail "$example"
    grep -qE 'won +command line +second\.txt|"waitBeforeExit": true' "$work/output" || fail "$example shows what it says"
done <"$work/examples"
