#!/usr/bin/env bash
# The code in README.md works: built against the installed package with CMake and with pkg-config, and configured
# against the source tree.
source "$(dirname "$0")/package.sh"

install_moved
project=$work/project
python3 "$PACKAGE_SOURCE/tests/package/readme_snippets.py" "$PACKAGE_SOURCE/README.md" "$project"

# Configures the project with the code in place of find_package. with_source_tree NAME CODE [CMAKE OPTION...]
with_source_tree() {
    local copy=$work/$1
    cp -r "$project" "$copy"
    ln -s "$PACKAGE_SOURCE" "$copy/libtestcommandlineparser"
    CODE=$2 awk '/^find_package/ { print ENVIRON["CODE"]; next } { print }' "$project/CMakeLists.txt" >"$copy/CMakeLists.txt"
    quietly cmake -S "$copy" -B "$copy/build" "${@:3}"
}

with_source_tree fetch_content "$(cat "$project/fetch_content.cmake")" \
    "-DFETCHCONTENT_SOURCE_DIR_TESTCOMMANDLINEPARSER=$PACKAGE_SOURCE"
with_source_tree add_subdirectory "$(grep -o 'add_subdirectory([a-z]*)' "$PACKAGE_SOURCE/README.md")"

build_project "$project" "-DCMAKE_PREFIX_PATH=$prefix"

# The compiler and the flags that the package was built with.
c++() {
    "$CXX" ${CXXFLAGS:-} "$@" ${LDFLAGS:-}
}
cd "$project"
sed "s|PREFIX/lib|$prefix/$PACKAGE_LIBDIR|" pkg_config.sh >pkg_config_here.sh
quietly source ./pkg_config_here.sh

# The programs run without the development files.
rm -r "$prefix"
install_to "$prefix" --component runtime
for program in "$built/camera_test" "$built/camera_test_c" "$project/camera_test"; do
    expect_equal "$program runs the test paths" 'running TestSuiteUsb' "$("$program" -tl DravikUsb TestSuiteUsb)"
    if "$program" -packetsize large >"$work/output"; then
        fail "$program fails on a bad number"
    fi
done

for program in "$built/camera_test" "$project/camera_test"; do
    usage=$("$program" -h) || fail "$program succeeds when it is asked for help"
    [[ $usage == "$program [-?] "* ]] || fail "$program prints its usage when it is asked for help"
done
