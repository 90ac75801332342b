# The newcomer's command itself, with nothing of ours running. Sourced by the test script, and the last one it reads.

stop_wine
unset DISPLAY virtual_display_pid wine_server_started
run_picture=$build/run-test.png
code=0
"$root/run" --screenshot "$run_picture" >"$build/logs/run.log" 2>&1 || code=$?
[ "$code" = 0 ] || tail -n 5 "$build/logs/run.log"
count_check "./run --screenshot" "$code"
grep -q 'the archive is shown' "$build/logs/run.log" && code=0 || code=1
count_check "./run shows the archive that comes with the project" "$code"
colours=$(identify -format %k "$run_picture" 2>/dev/null || echo 0)
[ "$colours" -gt 20 ] && code=0 || code=1
count_check "the picture shows a window ($colours colours)" "$code"
rm -f "$run_picture"
