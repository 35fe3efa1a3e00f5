#!/usr/bin/env bash
# The code in README.md, built as a project against the installed package, works as README.md says.
source "$(dirname "$0")/package.sh"

install_moved
python3 "$PACKAGE_SOURCE/tests/package/readme_snippets.py" "$PACKAGE_SOURCE/README.md" "$work/project"
build_project "$work/project" "-DCMAKE_PREFIX_PATH=$prefix"

for program in camera_test camera_test_c; do
    expect_equal "$program runs the test paths" 'running TestSuiteUsb' "$("$built/$program" -tl DravikUsb TestSuiteUsb)"

    usage=$("$built/$program" -h) || fail "$program succeeds when it is asked for help"
    [[ $usage == "$built/$program [-?] "* ]] || fail "$program prints its usage when it is asked for help"

    if usage=$("$built/$program" -packetsize large); then
        fail "$program fails on a bad number"
    fi
    [[ $usage == *'[-packetsize <n>]'* ]] || fail "$program prints its usage on a bad number"
done
