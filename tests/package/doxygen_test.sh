#!/usr/bin/env bash
# Doxygen reads the headers and the documents without a warning, so every public declaration is documented. Text that
# looks like Doxygen's own notation is unchanged, and no page links to a missing file.
source "$(dirname "$0")/package.sh"

mkdir "$work/docs"
(cat "$PACKAGE_SOURCE/docs/Doxyfile" && echo "OUTPUT_DIRECTORY = $work/docs") >"$work/Doxyfile"
cd "$PACKAGE_SOURCE"
quietly doxygen "$work/Doxyfile"
cd "$work/docs/html"

for page in classOrvexTestCommandLineParser index; do
    for text in _ORVEX_TEST_ARGS_ '$(NAME)' '%NAME%'; do
        grep -qF "<code>$text</code>" "$page.html" || fail "$page has $text as it is written"
    done
done

for picture in architecture peers scaling; do
    grep -qE "(src|data)=\"$picture.svg\"" md_docs_*.html || fail "a page shows $picture.svg"
done
grep -oE '(href|src|data)="[^"#:]+["#]' -- *.html | cut -d '"' -f 2 | tr -d '#' | sort -u | while read -r file; do
    [ -e "$file" ] || fail "$file, which a page links to, exists"
done
