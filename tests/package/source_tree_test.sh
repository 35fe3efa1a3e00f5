#!/usr/bin/env bash
# The source tree as a part of another project gives that project the library and nothing else.
source "$(dirname "$0")/package.sh"

build_project "$consumers/add_subdirectory" "-DLIBRARY_SOURCE=$PACKAGE_SOURCE"
expect_consumer_works "$built/consumer"

commands=$built/compile_commands.json
compiled=$(sed -n 's/^ *"file": "\(.*\)".*/\1/p' "$commands")
if grep -v -e "^$PACKAGE_SOURCE/src/" -e '/main\.cpp$' <<<"$compiled"; then
    fail 'no tests, tools or examples are built'
fi
if grep -e -Werror "$commands"; then
    fail 'no warning is an error'
fi
if grep '"command":.*main\.cpp' "$commands" | grep -e ' -W[a-z]'; then
    fail 'the outer project has no warnings set'
fi
[ ! -e "$built/CPackConfig.cmake" ] || fail 'the outer project makes its own packages'
