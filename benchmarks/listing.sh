# Listing, and opening in the browser. Sourced by the bench script.

# $1: zip or tar; $2: the number of members
archive() {
    local file=$data/$2.$1
    if [ ! -e "$file" ]; then
        say "Making an archive of $2 members" >&2
        "$bin/make_archive" "$1" "$2" "$file.part"
        mv "$file.part" "$file"
    fi
    printf %s "$file"
}

for members in 1000 100000 1000000; do
    file=$(archive zip $members)
    say "Listing a ZIP of $members members: driver with all ten fields, and peers"
    "$bin/measure" "$runs" "driver, ten fields" "$bin/bench_listing $file" \
        "tovar list" "$bin/tovar list $file" "zipinfo -1" "zipinfo -1 $file" "unzip -l" "unzip -l $file" \
        "bsdtar -t" "bsdtar -tf $file" "7zz l" "7zz l $file"
done
file=$(archive tar 100000)
say "Listing a TAR of 100000 members: driver with all ten fields, and peers"
"$bin/measure" "$runs" "driver, ten fields" "$bin/bench_listing $file" "bsdtar -t" "bsdtar -tf $file" \
    "tar -t" "tar -tf $file" "7zz l" "7zz l $file"

say "From OpenArchive to a painted window, under Wine, beside listing alone"
start_wine yes
for file in "$(archive zip 1000)" "$(archive zip 100000)" "$(archive zip 1000000)" "$(archive tar 100000)"; do
    printf '   %s\n' "$(basename "$file")"
    for ((run = 1; run <= runs; ++run)); do
        listing=$(wine "$build/win32-release/bin/bench_listing.exe" --halves "$(windows_path "$file")" 2>/dev/null)
        open_and_report "$file"
        printf '      %s; %s\n' "${listing#*, }" "$report"
    done
done
