# The newcomer's commands themselves, as the documents show them, with nothing of ours running. Sourced by the test script.

stop_wine
unset DISPLAY virtual_display_pid wine_server_started
run_work=$build/run-test
rm -rf "$run_work" "$build/screenshot.png"
mkdir -p "$run_work"
tar -czf "$run_work/some.tar.gz" -C "$root" LICENSE

# $1: the picture that the last command has left
count_picture() {
    local colours code=1
    grep -q 'the archive is shown' "$build/logs/run.log" && code=0
    count_check "$line shows the archive" "$code"
    colours=$(identify -format %k "$1" 2>/dev/null || echo 0)
    [ "$colours" -gt 20 ] && code=0 || code=1
    count_check "the picture shows a window ($colours colours)" "$code"
    rm -f "$1"
}

run_lines=(
    './run'
    './run some.tar.gz'
    './run --screenshot a.png'
)
for line in "${run_lines[@]}"; do
    read -ra words <<<"$line"
    code=0
    (cd "$run_work" && "$root/${words[0]}" "${words[@]:1}") >"$build/logs/run.log" 2>&1 || code=$?
    [ "$code" = 0 ] || tail -n 5 "$build/logs/run.log"
    count_check "$line" "$code"
    case $line in
    *a.png) count_picture "$run_work/a.png" ;;
    *) count_picture "$build/screenshot.png" ;;
    esac
done
rm -rf "$run_work"
