# The archive browser: folder model, first picture, sorting, selecting, and how long messages wait meanwhile. Sourced by
# the bench script.

# $1: the number of members; $2: spread, flat or folders
zip_of() {
    local file=$data/$2-$1.zip
    if [ ! -e "$file" ]; then
        say "Making an archive of $1 members, $2" >&2
        "$bin/make_archive" zip "$1" "$file.part" "$2"
        mv "$file.part" "$file"
    fi
    printf %s "$file"
}

# Runs a program several times; of what it prints, the medians. Prints lines of four fields: which program, what was
# done, milliseconds, and the longest wait of a message.
# $1: a word for the program; the rest: the command
medians() {
    local word=$1 run
    shift
    for ((run = 1; run <= runs; ++run)); do timeout 600 wine "$@" 2>/dev/null | tr -d '\r'; done |
        awk -F '\t' -v OFS='\t' -v word="$word" '
            !($1 in count) { names[++last] = $1 }
            {
                n = ++count[$1]
                for (i = n; i > 1 && time[$1, i - 1] > $2; --i) time[$1, i] = time[$1, i - 1]
                time[$1, i] = $2
                if ($3 != "" && $3 > wait[$1]) wait[$1] = $3
            }
            END { for (i = 1; i <= last; ++i) { name = names[i]; n = count[name]
                  print word, name, time[name, int((n + 1) / 2)], wait[name] } }'
}

# Puts the medians of the window beside those of the peer: what, milliseconds, longest wait, the same of the peer, and
# how many times as long as ours the peer took.
table() {
    awk -F '\t' '
        $1 == "ours" { names[++last] = $2; time[$2] = $3; wait[$2] = $4 }
        $1 == "peer" { peer[$2] = $3; peerWait[$2] = $4 }
        END {
            printf "   %-32s %12s %12s %12s %12s\n", "", "ms", "longest wait", "list view", "its wait"
            for (i = 1; i <= last; ++i) {
                name = names[i]
                printf "   %-32s %12.1f %12s", name, time[name], wait[name]
                if (name in peer) printf " %12.1f %12s  x %.2f", peer[name], peerWait[name], peer[name] / time[name]
                else if (name == "open and paint") {
                    listing = time["listing alone"]
                    printf "  %.2f times the listing alone,", time[name] / listing
                    printf " %.2f times listing and bare controls", time[name] / (listing + time["bare controls"])
                }
                printf "\n"
            }
        }'
}

# $1: archive; $2: folder; $3: rows of the ordinary list view beside it; none when it is left out
window_beside() {
    local programs=$build/win32-release/bin
    {
        medians ours "$programs/bench_browser_window.exe" "$(windows_path "$1")" "$2"
        [ -z "${3:-}" ] || medians peer "$programs/bench_list_view.exe" "$3"
    } | table
}

say "Folder model and order of rows of a made-up listing, natively"
"$bin/bench_contents"
[ -n "${wine_server_started:-}" ] || start_wine yes
say "The same in a 32-bit process under Wine"
wine "$build/win32-release/bin/bench_contents.exe" 2>/dev/null

say "A folder of 100000 files in the browser window, under Wine, beside an ordinary list view filled row by row"
window_beside "$(zip_of 100000 flat)" '\all\' 100000
# Without the ordinary list view: its time and memory grow with its rows, which are seen at 100,000 well enough.
say "A folder of 1000000 files"
window_beside "$(zip_of 1000000 flat)" '\all\'
say "A folder of 50000 folders"
window_beside "$(zip_of 50000 folders)" '\all\'
