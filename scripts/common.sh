# Shared by the scripts of this folder: `source` it, with the project's root as the working directory.

set -euo pipefail

step() {
    printf '== %s\n' "$*"
}

# Runs a command with its output in a log, which is shown only when the command fails.
# quietly LOG COMMAND...
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    # In the background, because `set -e` does not reach into a condition.
    "$@" >"$log" 2>&1 &
    if ! wait $!; then
        cat "$log" >&2
        printf 'failed: %s\n' "$*" >&2
        return 1
    fi
}

# Installs what is missing of the named Debian packages; where it may not, names it and stops.
# need_packages PACKAGE...
need_packages() {
    if [ "$(uname -s)" = Darwin ]; then
        need_homebrew_packages
        return
    fi
    local package missing=()
    for package in "$@"; do
        if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    if [ "$(id -u)" -ne 0 ]; then
        printf 'Missing packages. Install them as root: apt-get install %s\n' "${missing[*]}" >&2
        exit 1
    fi
    step "installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    quietly build/packages.log apt-get update
    quietly build/packages.log apt-get install -y --no-install-recommends "${missing[@]}"
}

need_homebrew_packages() {
    if ! command -v cmake >/dev/null || ! command -v ninja >/dev/null; then
        echo 'Missing tools. Install them: brew install cmake ninja googletest google-benchmark nlohmann-json fmt' >&2
        exit 1
    fi
}

# Configures and builds a preset. build_preset PRESET
build_preset() {
    step "configuring and building in build/$1"
    quietly "build/$1/configure.log" cmake --preset "$1"
    quietly "build/$1/build.log" cmake --build --preset "$1"
}
