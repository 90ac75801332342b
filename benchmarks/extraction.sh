# From OK in the extraction dialog until it is gone, for 100,000 small members, beside the console host on the same
# archive: what the browser, its messages and its windows cost. Sourced by the bench script.

# Prints the median of numbers, one a line.
median_of() { sort -n | awk '{ n[NR] = $1 } END { print n[int((NR + 1) / 2)] }'; }

# One extraction in the dialog; prints milliseconds.
# $1: archive; $2: "selected", or nothing for all members
extract_by_dialog() {
    rm -rf "$target/out" && mkdir "$target/out"
    timeout 900 wine "$programs/bench_extraction.exe" "$(windows_path "$1")" "$(windows_path "$target/out")" ${2:+"$2"} \
        2>/dev/null | tr -d '\r' | cut -f 2
}

# The same with the console host, from its start to its end. Its output goes to a file: it takes the null device for a
# terminal, and shows its progress there.
# $1: archive
extract_by_console() {
    local begin
    rm -rf "$target/out" && mkdir "$target/out"
    begin=$(date +%s%N)
    timeout 900 wine "$programs/tovar.exe" extract --to "$(windows_path "$target/out")" "$(windows_path "$1")" \
        >"$target/console.txt" 2>&1
    echo $((($(date +%s%N) - begin) / 1000000))
}

# $1: archive. They take turns: a machine whose speed drifts treats them alike.
dialog_beside_console() {
    local run all=() selected=() console=()
    for ((run = 1; run <= runs; ++run)); do
        all+=("$(extract_by_dialog "$1")")
        console+=("$(extract_by_console "$1")")
        selected+=("$(extract_by_dialog "$1" selected)")
    done
    awk -v name="$(basename "$1")" -v all="$(printf '%s\n' "${all[@]}" | median_of)" \
        -v selected="$(printf '%s\n' "${selected[@]}" | median_of)" \
        -v console="$(printf '%s\n' "${console[@]}" | median_of)" 'BEGIN {
            printf "   %-20s console host %9.0f ms, dialog %9.0f ms  x %.3f, selected names %9.0f ms  x %.3f\n", name,
                console, all, all / console, selected, selected / console }'
}

programs=$build/win32-release/bin
members=${TOVAREX_BENCH_MEMBERS:-100000}
target=${target:-$(mktemp -d "${TOVAREX_MEMORY_DISK:-/dev/shm}/tovarex-bench.XXXXXX")}
say "Extraction of $members small members by the dialog, under Wine, beside the console host"
[ -n "${wine_server_started:-}" ] || start_wine yes
trap 'stop_wine; rm -rf "$target"' EXIT
for kind in zip tar; do
    archive=$data/spread-$members.$kind
    [ -e "$archive" ] || { "$bin/make_archive" $kind "$members" "$archive.part" && mv "$archive.part" "$archive"; }
    dialog_beside_console "$archive"
done
rm -rf "$target/out"
