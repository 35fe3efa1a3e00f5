#!/usr/bin/env bash
# A program like the installed example camera_suite works with CMake's test discovery, with GoogleTest's own flags and
# in shards.
source "$(dirname "$0")/package.sh"
unset GTEST_FILTER GTEST_OUTPUT GTEST_TOTAL_SHARDS GTEST_SHARD_INDEX

good_arguments='-tl DravikGigE:SocketDriver -socketbuffer 2048'
all_tests='DeathTest.StartsTheProgramAgain
DeviceFilter.IncludesGigECameras
DeviceFilter.SelectsAtLeastOneDeviceClass
PacketSize.FitsJumboFrame
PacketSize.IsWholeNumber
StreamParameters.NameTheDriverBeforeTheSocketBuffer'

# Runs the ctest tests that match a pattern, with further arguments in ORVEX_TEST_ARGS, and prints the GoogleTest
# tests that ran and passed. tests_run_by PATTERN [ARGUMENT...]
tests_run_by() {
    ORVEX_TEST_ARGS="$good_arguments ${*:2}" quietly ctest --test-dir "$built" --no-tests=error -V -R "$1"
    sed -n 's/^[0-9]*: \[       OK \] \([A-Za-z.]*\) .*/\1/p' "$work/log" | LC_ALL=C sort
}

install_moved
build_project "$consumers/googletest" "-DCMAKE_PREFIX_PATH=$prefix" \
    "-DEXAMPLES=$prefix/share/doc/testcommandlineparser/examples"

expect_equal 'a test path limits what is discovered' $'PacketSize.FitsJumboFrame\nPacketSize.IsWholeNumber' \
    "$(tests_run_by '^pre_test/' PacketSize)"
# Makes CMake discover the tests again.
touch "$built/camera_suite"

for tests in post_build pre_test shard; do
    expect_equal "$tests runs each test once" "$all_tests" "$(tests_run_by "^$tests/")"
done
expect_equal 'the filter of a test that was discovered wins over a test path' "$all_tests" \
    "$(tests_run_by '^post_build/' PacketSize)"

expect_equal 'a list runs no test' '' "$(tests_run_by '^list$')"
grep -q '^[0-9]*:   FitsJumboFrame$' "$work/log" || fail 'a list names the tests'

for report in option flag; do
    tests_run_by "^${report}_report$" PacketSize >"$work/output"
    expect_equal "${report}.xml reports the tests that ran" 2 "$(grep -c '<testcase ' "$built/$report.xml")"
done
