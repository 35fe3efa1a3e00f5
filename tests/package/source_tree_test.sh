#!/usr/bin/env bash
# The source tree as a part of another project gives that project the library and nothing else.
source "$(dirname "$0")/package.sh"

for way in add_subdirectory fetch_content; do
    build_project "$consumers/$way" "-DLIBRARY_SOURCE=$PACKAGE_SOURCE"
    expect_consumer_works "$built/consumer"

    commands=$built/compile_commands.json
    compiled=$(sed -n 's/^ *"file": "\(.*\)".*/\1/p' "$commands")
    if grep -v -e "^$PACKAGE_SOURCE/src/" -e '/main\.cpp$' <<<"$compiled"; then
        fail "$way builds no tests, tools and examples"
    fi
    if grep -e -Werror "$commands"; then
        fail "$way imposes no warnings as errors"
    fi
    if grep '"command":.*main\.cpp' "$commands" | grep -e ' -W[a-z]'; then
        fail "$way sets no warnings for the outer project"
    fi
done
