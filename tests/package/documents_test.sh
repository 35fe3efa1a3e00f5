#!/usr/bin/env bash
# The commands in the documents work as written in a new clone. Covers those that take less than a minute and that no
# other check runs.
source "$(dirname "$0")/package.sh"

quietly git clone "$PACKAGE_SOURCE" "$work/clone"
cd "$work/clone"

# As in a user's shell, the scripts choose the compilers.
unset CC CXX CFLAGS CXXFLAGS LDFLAGS

# Runs a command from a document, with a placeholder replaced. documented DOCUMENT COMMAND [PLACEHOLDER REPLACEMENT]
documented() {
    local command=$2
    grep -qF -- "$command" "$1" || fail "$1 has the command: $command"
    if [ $# -eq 4 ]; then
        command=${command//$3/$4}
    fi
    quietly bash -c "$command"
}

documented README.md 'cmake -S . -B build && cmake --build build && cmake --install build --prefix PREFIX' \
    PREFIX "$work/prefix"
[ -x "$work/prefix/bin/show_arguments" ] || fail 'the installation has show_arguments'
documented README.md 'scripts/demo'
SHOW_ARGUMENTS_FORMAT=json scripts/demo 2>"$work/progress" | python3 -m json.tool >"$work/report.json" ||
    fail 'scripts/demo prints JSON on standard output when asked to'
example=$(sed -n '/^    \$ ORVEX_TEST_ARGS=/,/^    succeeded/s/^    //p' README.md)
command=$(head -n 1 <<<"$example")
expect_equal 'README.md shows the end of the report' "$(tail -n +2 <<<"$example")" \
    "$(bash -c "${command#$ }" 2>"$work/progress" | sed -n '/^Options$/,$ { /./p }')"
documented CONTRIBUTING.md 'mkdir -p build && doxygen docs/Doxyfile'
documented CONTRIBUTING.md 'scripts/mutate --list'
documented docs/releasing.md 'scripts/abi --compare TAG' TAG HEAD
documented docs/releasing.md 'scripts/abi --renew'
expect_equal 'every check of scripts/check-deep is a hosted job' \
    "$(sed -n 's/^check_\(.*\)() {$/\1/p' scripts/check-deep | sort)" \
    "$(sed -n 's/^          - \([a-z0-9]*\)$/\1/p' .github/workflows/ci.yml | sort)"
expect_equal 'the symbol lists are current' '' "$(git status --porcelain)"
