#!/usr/bin/env bash
# Every public declaration is documented: doxygen reads the headers and README.md without a warning. And
# what looks like doxygen's own notation comes through unchanged.
source "$(dirname "$0")/package.sh"

mkdir "$work/docs"
(cat "$PACKAGE_SOURCE/docs/Doxyfile" && echo "OUTPUT_DIRECTORY = $work/docs") >"$work/Doxyfile"
cd "$PACKAGE_SOURCE"
quietly doxygen "$work/Doxyfile"

for page in classOrvexTestCommandLineParser index; do
    for text in _ORVEX_TEST_ARGS_ '$(NAME)' '%NAME%'; do
        grep -qF "<code>$text</code>" "$work/docs/html/$page.html" || fail "$page has $text as it is written"
    done
done
