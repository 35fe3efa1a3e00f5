# Shared by the scripts in this directory: `source` it with the project's root as the working directory.

set -euo pipefail

# The packages for building tools, examples and tests, and for running the tests.
build_packages=(g++ cmake ninja-build libgtest-dev libgmock-dev doctest-dev nlohmann-json3-dev libfmt-dev
    python3 pkgconf mandoc dpkg-dev file)

platform=$(uname -s)
jobs=$(getconf _NPROCESSORS_ONLN)
development=dev
if [ "$platform" = Darwin ]; then
    development=macos-native
fi

# Progress goes to standard error, so that the output of a script can be piped.
step() {
    printf '== %s\n' "$*" >&2
}

linux_only() {
    if [ "$platform" != Linux ]; then
        echo "$0 is for Linux only" >&2
        exit 1
    fi
}

# Runs a command with its output in a log, and shows the log only if the command fails.
# quietly LOG COMMAND...
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    # In the background, because `set -e` has no effect inside a condition.
    "$@" >"$log" 2>&1 &
    if ! wait $!; then
        cat "$log" >&2
        printf 'failed: %s\n' "$*" >&2
        return 1
    fi
}

# Runs a long command. On a terminal it shows its own progress; otherwise its output goes into a log.
# with_progress LOG COMMAND...
with_progress() {
    if [ ! -t 2 ]; then
        step "log: $1"
        quietly "$@"
    elif ! "${@:2}" >&2; then
        printf 'failed: %s\n' "${*:2}" >&2
        return 1
    fi
}

# Whether a package is installed, by its name on this platform. On a Mac, a command with that name is enough.
is_installed() {
    if [ "$platform" = Darwin ]; then
        command -v "$1" >/dev/null || brew list --versions "$1" >/dev/null 2>&1
    else
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
    fi
}

# The name of a Debian package on this platform; empty if it is not needed there, or comes with another package or the
# system.
package_name() {
    case $platform/$1 in
        Darwin/g++ | Darwin/libgmock-dev | Darwin/mandoc | Darwin/dpkg-dev | Darwin/file) ;;
        Darwin/doctest-dev) echo doctest ;;
        Darwin/libfmt-dev) echo fmt ;;
        Darwin/libgtest-dev) echo googletest ;;
        Darwin/ninja-build) echo ninja ;;
        Darwin/nlohmann-json3-dev) echo nlohmann-json ;;
        *) echo "$1" ;;
    esac
}

# Installs the named Debian packages that are missing. Where it cannot, it lists them and exits.
# need_packages PACKAGE...
need_packages() {
    local package missing=
    for package in "$@"; do
        package=$(package_name "$package")
        if [ -n "$package" ] && ! is_installed "$package"; then
            missing="$missing $package"
        fi
    done
    if [ -z "$missing" ]; then
        return
    fi
    if [ "$platform" = Darwin ]; then
        echo "Missing packages. Install them: brew install$missing" >&2
        exit 1
    fi
    if [ "$(id -u)" -ne 0 ]; then
        echo "Missing packages. Install them as root: apt-get install$missing" >&2
        exit 1
    fi
    step "installing$missing"
    export DEBIAN_FRONTEND=noninteractive
    quietly build/packages.log apt-get update
    for package in $missing; do
        if [ -z "$(apt-cache policy "$package" | sed -n 's/^ *Candidate: *//p' | grep -v '(none)')" ]; then
            echo "$0 needs $package, which this system does not offer; Debian 12 does." >&2
            exit 1
        fi
    done
    with_progress build/packages.log apt-get install -y --no-install-recommends $missing
}

# Configures and builds a preset, or some of its targets. build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1
    shift
    if [ $# -gt 0 ]; then
        set -- --target "$@"
    fi
    step "configuring and building in build/$preset"
    quietly "build/$preset/configure.log" cmake --preset "$preset"
    with_progress "build/$preset/build.log" cmake --build --preset "$preset" "$@"
}

# Runs the workflow of a preset: configures, builds and, if it has tests, runs them. run_workflow PRESET
run_workflow() {
    local log=build/$1/workflow.log
    export CTEST_PARALLEL_LEVEL=$jobs
    if [ -t 2 ]; then
        step "running the workflow $1"
        cmake --workflow --preset "$1" >&2
    else
        step "running the workflow $1 (log: $log)"
        mkdir -p "build/$1"
        cmake --workflow --preset "$1" >"$log" 2>&1 || { show_failures "$log" >&2 && return 1; }
        grep 'tests passed' "$log" || true
    fi
}

# Runs ctest in the build of a preset. run_tests PRESET ARGUMENT...
run_tests() {
    local log=build/$1/test.log
    local command=(ctest --parallel "$jobs" --output-on-failure "${@:2}")
    if [ -t 2 ]; then
        step "running the tests of build/$1"
        "${command[@]}" --progress --output-log "$log" >&2 || { show_failures "$log" >&2 && return 1; }
    else
        step "running the tests of build/$1 (log: $log)"
        "${command[@]}" >"$log" 2>&1 || { show_failures "$log" >&2 && return 1; }
        grep 'tests passed' "$log"
    fi
}

# Prints the names of the failed tests, then the first lines of the output of the first ones. Tests are numbered in the
# order of tests/CMakeLists.txt: unit tests come first.
# show_failures LOG
show_failures() {
    local lines=40 tests=10
    LC_ALL=C awk -v lines=$lines -v tests=$tests -v log_file="$1" '
        /^ *[0-9]+\/[0-9]+ Test +#[0-9]+: / {
            sub(/^ *[0-9]+\/[0-9]+ Test +#/, "")
            gsub(/ \.\.\.+/, " ")
            number = /   Passed  |\*\*\*Skipped/ ? 0 : $1 + 0
            if (number > last) { last = number }
            if (number > 0) { title[number] = $0 }
            next
        }
        # Skips what GoogleTest prints around a failure.
        /^ *Start +[0-9]+: |^Note: Google Test filter|^Running main|^\[[-=]+\]|^\[  ?[A-Z ]+ \] |FAILED TEST|^ *$/ { next }
        /^[0-9]+% tests passed/ { number = 0 }
        number > 0 && ++count[number] <= lines { output[number] = output[number] $0 "\n" }
        { line[NR % lines] = $0 }
        END {
            for (i = 1; i <= last; ++i) if (i in title) print "failed: " title[i]
            for (i = 1; i <= last; ++i) {
                if (i in title && shown++ < tests) {
                    printf "\n-- %s\n%s", title[i], output[i]
                    if (count[i] > lines) printf "... and %d more lines\n", count[i] - lines
                }
            }
            # No test was run.
            for (i = NR + 1; last == 0 && i <= NR + lines; ++i) if (i % lines in line) print line[i % lines]
            if (shown > tests) printf "\n... and %d more tests\n", shown - tests
            print "\nthe whole log: " log_file
        }' "$1"
}
