# What run, test and bench share. Sourced, not run. Expects $root, the checkout's folder.

set -euo pipefail
export root

build=$root/build
export TOVAREX_APT_DIR=$build/packages

# The Windows that is built for and run: 32 bits, or 64 with TOVAREX_64=1.
windows=win32
if [ "${TOVAREX_64:-}" = 1 ]; then windows=win64; fi
programs_folder=$build/$windows-release/bin

say() { printf '\033[1m==\033[0m %s\n' "$*"; }
fail() {
    printf '!! %s\n' "$*" >&2
    exit 1
}

# Runs a command with its output in a log; shows the log's end only when it fails.
# $1: the log's name; the rest: the command
logged() {
    local log=$build/logs/$1.log
    shift
    mkdir -p "$build/logs"
    if ! "$@" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        fail "That did not work; the whole output is in $log"
    fi
}

# Configures a preset once, and builds the given targets (all of them when none is named).
build_preset() {
    local preset=$1
    shift
    if [ ! -e "$build/$preset/build.ninja" ]; then
        say "Configuring $preset"
        logged "configure-$preset" cmake -S "$root" --preset "$preset"
    fi
    say "Building $preset"
    logged "build-$preset" cmake --build "$build/$preset" ${1:+--target} "$@"
}

. "$root/scripts/packages.sh"
. "$root/scripts/dependencies.sh"
. "$root/scripts/wine.sh"
