# Shared by the tests in this directory: temporary directory, installation, checks.

set -euo pipefail
unset ORVEX_TEST_ARGS _ORVEX_TEST_ARGS_ ORVEX_DEVICE_FILTER GENICAM_GENTL64_PATH
unset DESTDIR CMAKE_PREFIX_PATH PKG_CONFIG_PATH LD_LIBRARY_PATH DYLD_LIBRARY_PATH

consumers=$PACKAGE_SOURCE/tests/package/consumers
work=$(mktemp -d)
work=$(cd "$work" && pwd -P)
trap 'rm -rf "$work"' EXIT
cd "$work"

fail() {
    printf 'failed: %s\n' "$*" >&2
    exit 1
}

# Shows the output of a command only if the command fails. quietly COMMAND...
quietly() {
    "$@" >"$work/log" 2>&1 || {
        cat "$work/log" >&2
        fail "$*"
    }
}

# expect_equal DESCRIPTION EXPECTED ACTUAL
expect_equal() {
    if [ "$2" != "$3" ]; then
        printf 'expected:\n%s\nactual:\n%s\n' "$2" "$3" >&2
        fail "$1"
    fi
}

# install_to PREFIX [OPTION...]
install_to() {
    local prefix=$1
    shift
    quietly cmake --install "$PACKAGE_BUILD" ${PACKAGE_CONFIG:+--config "$PACKAGE_CONFIG"} --prefix "$prefix" "$@"
}

# Installs the package, or a component, and moves what is installed to $prefix. install_moved [--component NAME]
install_moved() {
    install_to "$work/first" "$@"
    prefix=$work/moved
    mv "$work/first" "$prefix"
}

# Makes the packages in the directory $packages. make_packages GENERATOR
make_packages() {
    packages=$work/packages
    quietly cpack -G "$1" --config "$PACKAGE_BUILD/CPackConfig.cmake" ${PACKAGE_CONFIG:+-C "$PACKAGE_CONFIG"} -B "$packages"
    rm -r "$packages/_CPack_Packages"
}

# Configures and builds an outside project in the directory $built. build_project SOURCE [CMAKE OPTION...]
build_project() {
    local source=$1
    shift
    built=$(mktemp -d "$work/built.XXXXXX")
    quietly cmake -S "$source" -B "$built" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "$@"
    quietly cmake --build "$built"
}

# Runs a program made of consumers/main.cpp or consumers/main.c. expect_consumer_works PROGRAM
expect_consumer_works() {
    expect_equal "$1 gets what it asks for" $'result.txt\nTestSuiteUsb\nDeviceClass=DravikUsb' \
        "$("$1" -tl DravikUsb -o result.txt TestSuiteUsb)"
    if "$1" -packetsize large; then
        fail "$1 reports a bad number"
    fi
}
