# Runs test programs and counts their tests. Sourced, not run.

passed=0
failed=0
failures=()

# Adds one program's result, read from what it printed. What it says behind "[ COUNT    ]" is shown.
# $1: its name; $2: its exit code; $3: its log
count_program() {
    local name=$1 code=$2 log=$3 good bad
    good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
    bad=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
    good=${good:-0} bad=${bad:-0}
    # A program that ends badly without naming a failed test has crashed or never got to its tests.
    if [ "$bad" = 0 ] && { [ "$code" != 0 ] || [ "$good" = 0 ]; }; then bad=1; fi
    passed=$((passed + good)) failed=$((failed + bad))
    printf '   %-36s %5d passed' "$name" "$good"
    if [ "$bad" = 0 ]; then
        echo
    else
        printf ', %d failed (exit code %s): %s\n' "$bad" "$code" "$log"
        grep -E '^\[  FAILED  \] [A-Za-z]' "$log" | sort -u | head -n 20 || tail -n 20 "$log"
        failures+=("$name")
    fi
    sed -n 's/^\[ COUNT    \] /      /p' "$log"
}

# Runs one program under a time limit; its exit code goes to a file beside its log.
# $1: its log; the rest: the command
log_program() {
    local log=$1 code=0
    shift
    rm -f "$log.code"
    timeout --kill-after=10 "${TOVAREX_TEST_SECONDS:-300}" "$@" </dev/null >"$log" 2>&1 || code=$?
    tr -d '\r' <"$log" >"$log.text" && mv "$log.text" "$log"
    echo "$code" >"$log.code.part" && mv "$log.code.part" "$log.code"
}

# Runs one program and counts it.
# $1: the name it is shown under; the rest: the command
run_program() {
    local name=$1 log=$build/logs/test-$1.log
    shift
    log_program "$log" "$@"
    count_program "$name" "$(cat "$log.code")" "$log"
}

# Counts one check that is no GoogleTest program.
# $1: what it says; $2: 0 when it held
count_check() {
    if [ "$2" = 0 ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        failures+=("$1")
        printf '   %s: failed\n' "$1"
    fi
}

# Counts programs in their order while another process runs them.
# $1: that process; the rest: the names they are shown under
count_as_they_end() {
    local runner=$1 name log
    shift
    for name in "$@"; do
        log=$build/logs/test-$name.log
        until [ -e "$log.code" ] || ! kill -0 "$runner" 2>/dev/null; do sleep 0.1; done
        count_program "$name" "$(cat "$log.code" 2>/dev/null || echo none)" "$log"
    done
}

# The native programs share nothing, so that each core can run one. They are counted in their order.
run_native_suite() {
    local programs program runner
    mkdir -p "$build/logs"
    mapfile -t programs <"$build/native-debug/test-programs.txt"
    for program in "${programs[@]}"; do rm -f "$build/logs/test-$program.log.code"; done
    (
        for program in "${programs[@]}"; do
            while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do wait -n || true; done
            log_program "$build/logs/test-$program.log" env UBSAN_OPTIONS=print_stacktrace=1 \
                TOVAREX_CORPUS="$deps/src" "$build/native-debug/bin/$program" &
        done
        wait
    ) &
    runner=$!
    count_as_they_end "$runner" "${programs[@]}"
    wait "$runner"
}

# Makes the Japanese locale, whose ANSI code page is 932; nothing is installed.
ensure_japanese_locale() {
    [ -d "$build/locale/ja_JP.UTF-8" ] && return 0
    mkdir -p "$build/locale"
    logged localedef localedef -i ja_JP -f UTF-8 "$build/locale/ja_JP.UTF-8"
}

# Runs programs under Wine in a prefix and on a display of their own, until none is left that no other lane has taken.
# $1: which lane, from 1 on; the rest: the names of the logs; "932-" in front is the run with the Japanese code page
run_wine_lane() {
    local lane=$1 name program
    shift
    # Recycle bins, temporary files and the like of the tests stay in the build folder, so that they may be filled.
    export XDG_DATA_HOME=$build/wine-data-$lane TOVAREX_OWN_RECYCLE_BIN=1
    mkdir -p "$XDG_DATA_HOME"
    if [ "$lane" != 1 ]; then use_copied_prefix "$lane"; fi
    start_wine yes
    for name in "$@"; do
        mkdir "$build/logs/taken-$name" 2>/dev/null || continue
        program=$programs_folder/${name#932-}.exe
        if [ "$name" = "${name#932-}" ]; then
            log_program "$build/logs/test-wine-$name.log" wine "$program"
        else
            log_program "$build/logs/test-wine-$name.log" \
                env LOCPATH="$build/locale" LC_ALL=ja_JP.UTF-8 wine "$program"
        fi
    done
}

# Windows programs share the clipboard, the focus, the registry and the folders of their user: each lane has its own.
run_wine_suite() {
    local names=() name lane lanes=() runner
    mkdir -p "$build/logs"
    ensure_japanese_locale
    (start_wine yes) # makes the prefix that the lanes copy
    # The programs with windows, which take longest, stand at the end of the list.
    mapfile -t names < <({
        cat "$build/$windows-release/test-programs.txt"
        sed 's/^/932-/' "$build/$windows-release/test-programs-932.txt"
    } | tac)
    for name in "${names[@]}"; do rm -rf "$build/logs/test-wine-$name.log.code" "$build/logs/taken-$name"; done
    (
        for lane in $(seq "$(($(nproc) < 4 ? $(nproc) + 1 : 4))"); do # they wait often; half a gigabyte each
            (run_wine_lane "$lane" "${names[@]}") &
            lanes+=("$!")
        done
        wait "${lanes[@]}"
    ) &
    runner=$!
    count_as_they_end "$runner" "${names[@]/#/wine-}"
    wait "$runner" || fail "Wine did not start; see $build/logs"
    for name in "${names[@]}"; do rmdir "$build/logs/taken-$name"; done
}

run_script_suite() {
    local check
    for check in "$root"/tests/scripts/*.sh; do
        [ -e "$check" ] || continue
        . "$check"
    done
}

summary() {
    [ "$failed" = 0 ] || say "Failed: ${failures[*]}"
    echo "$passed passed, $failed failed"
    [ "$failed" = 0 ]
}
