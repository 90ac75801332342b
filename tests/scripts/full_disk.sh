# The console hosts on a disk that becomes full, and on one that cannot be written to: they say so, and leave no part of a
# file and nothing of their own. Where this user may not mount disks, it is not tried. Sourced by the test script.

disk_work=$build/disk-test
disk=$disk_work/disk
umount "$disk" 2>/dev/null || true # of a run that was broken off
rm -rf "$disk_work"
mkdir -p "$disk"
(
    cd "$disk_work"
    printf 'small\n' >a.txt
    seq 1 100000 >b.txt # more than the disk holds
    zip -q made.zip a.txt b.txt
    tar -czf made.tgz a.txt b.txt
    jlha aq made.lzh a.txt b.txt >/dev/null
    zip -q small.zip a.txt
    tar -czf small.tgz a.txt
    jlha aq small.lzh a.txt >/dev/null
)

# $1: the host; $2: the archive; $3: the files that are to be there in the end; $4: what it has to say, a pattern;
# $5: what the disk is like
count_on_disk() {
    local code=0 files wrong=0
    : >"$build/logs/tovar.log"
    $1 extract --to "$disk" "$disk_work/$2" >"$build/logs/extract.log" 2>&1 </dev/null || code=$?
    files=$(cd "$disk" && find . -mindepth 1 | sort | paste -sd ' ')
    [ "$code" = 1 ] || wrong=1
    [ "$files" = "$3" ] || wrong=1
    grep -qiE "$4" "$build/logs/extract.log" "$build/logs/tovar.log" || wrong=1
    if [ "$wrong" = 1 ]; then
        echo "   code $code, files: $files"
        cat "$build/logs/extract.log" "$build/logs/tovar.log"
    fi
    count_check "$1 with $2 on a disk that $5" "$wrong"
}

if mount -t tmpfs -o size=64k none "$disk" 2>/dev/null; then
    for console in native_tovar wine_tovar; do
        # The room for all that a ZIP archive holds is asked for at the beginning.
        for case in made.zip: made.tgz:./a.txt made.lzh:./a.txt; do
            count_on_disk "$console" "${case%%:*}" "${case#*:}" "not enough (room|disk space)" "becomes full"
            rm -f "$disk"/*
        done
    done
    mount -o remount,ro "$disk"
    for console in native_tovar wine_tovar; do
        for file in small.zip small.tgz small.lzh; do
            count_on_disk "$console" "$file" "" "read-only|may not be written" "is only read"
        done
    done
    umount "$disk"
else
    echo "   A disk that becomes full is not tried: mounting one is not allowed here"
fi
rm -rf "$disk_work"
