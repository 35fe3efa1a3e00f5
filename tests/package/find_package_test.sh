#!/usr/bin/env bash
# An outside CMake project finds the installed package after its prefix has moved.
source "$(dirname "$0")/package.sh"

install_moved
package_dir=$prefix/$PACKAGE_LIBDIR/cmake/testcommandlineparser

build_project "$consumers/find_package" "-DCMAKE_PREFIX_PATH=$prefix"
expect_equal 'the moved package is the one that is found' "$package_dir" \
    "$(sed -n 's/^testcommandlineparser_DIR:PATH=//p' "$built/CMakeCache.txt")"
expect_consumer_works "$built/consumer"
grep -q -- '-std=c++11' "$built/compile_commands.json" || fail 'the program is compiled as C++11'

# A project that asks for another major version is refused.
for version in 0.9 2; do
    project=$work/version_$version
    mkdir "$project"
    printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(other_version LANGUAGES C)' \
        "find_package(testcommandlineparser $version CONFIG REQUIRED)" >"$project/CMakeLists.txt"
    if cmake -S "$project" -B "$project/build" "-DCMAKE_PREFIX_PATH=$prefix" >"$work/log" 2>&1; then
        fail "a project that asks for version $version is refused"
    fi
    grep -qF "$package_dir/testcommandlineparserConfig.cmake, version: $PACKAGE_VERSION" "$work/log" || {
        cat "$work/log" >&2
        fail "version $version is refused because of its number"
    }
done

if grep -rIF -e "$work/first" -e "$PACKAGE_SOURCE" -e "$PACKAGE_BUILD" "$prefix/$PACKAGE_LIBDIR" \
    "$prefix/$PACKAGE_INCLUDEDIR"; then
    fail 'no installed file names the build directory or the first prefix'
fi
