# The console host beside other programs, on archives that those programs made. Sourced by the test script.

console_work=$build/script-test
rm -rf "$console_work"
mkdir -p "$console_work/tree/docs/old notes" "$console_work/tree/src/lib" "$console_work/tree/names"
(
    cd "$console_work/tree"
    seq 1 5000 >"docs/old notes/numbers.txt"
    printf 'comma\n' >"docs/a,b.txt"
    : >empty.txt
    head -c 70000 /dev/zero >src/lib/zeros.bin
    printf 'umlaut\n' >"names/Größe.txt"
    printf 'kanji\n' >"names/表ソ.txt"
    find . -exec touch -d '2001-05-17 17:30:58' {} +
    zip -q -r ../made.zip .
    zip -q -r -fz -P secret ../locked.zip docs
    7zz a -bso0 -bsp0 ../seven.zip . >/dev/null
    tar -cf ../made.tar docs src names empty.txt
    tar --format=ustar -cf ../plain.tar docs src empty.txt
    tar -czf ../made.tgz docs src names empty.txt
    tar -cjf ../made.tar.bz2 docs src names empty.txt
    tar -cf - docs src names empty.txt | compress -c >../made.tar.Z
    gzip -nc "docs/a,b.txt" >../single.gz
    bzip2 -c "docs/a,b.txt" >../single.bz2
    compress -fc "docs/old notes/numbers.txt" >../single.Z || true
)

# "path size crc" of each file member, as another program lists them.
members_by_peer() {
    7zz l -slt -ba "$1" | tr -d '\r' | awk '
        function give() { if (path != "" && !folder) print path "|" size "|" tolower(crc); path = crc = ""; folder = 0 }
        /^Path = /   { give(); path = substr($0, 8) }
        /^Size = /   { size = substr($0, 8) }
        /^CRC = /    { crc = substr($0, 7) }
        /^Folder = \+/ { folder = 1 }
        END { give() }' | sort
}

# The same from our own listing. A folder member has an empty name.
members_by_us() {
    tr -d '\r' | grep -o '{"path":.*}' | sed -e 's/^{"archive".*"entries":\[//' |
        sed -n -E 's/^\{"path":"(([^"\\]|\\.)*)","name":"(([^"\\]|\\.)+)","original":([0-9]+),.*"crc":"([0-9a-f]+)"\}.*$/\1\3|\5|\6/p' |
        sed -e 's/^\\\\//' -e 's/\\\\/\//g' -e 's/^\.\///' | sort
}

native_tovar() { "$build/native-debug/bin/tovar" "$@"; }
wine_tovar() {
    local word words=()
    for word in "$@"; do
        [[ "$word" == /* ]] && word=$(windows_path "$word")
        words+=("$word")
    done
    timeout 60 wine "$programs_folder/tovar.exe" "${words[@]}" </dev/null 2>"$build/logs/tovar.log"
}

# Compares two listings and shows how they differ.
# $1: what is compared; $2 and $3: the files
count_equal() {
    local same=0
    diff "$2" "$3" >"$build/logs/listing.diff" || same=1
    [ -s "$2" ] || same=1
    [ "$same" = 0 ] || head -n 10 "$build/logs/listing.diff"
    count_check "$1" "$same"
}

for console in native_tovar wine_tovar; do
    for file in made.zip seven.zip made.tar plain.tar; do
        members_by_peer "$console_work/$file" >"$console_work/peer"
        $console list --json "$console_work/$file" | members_by_us >"$console_work/ours"
        case $file in *.tar) sed -i -E 's/\|[0-9a-f]*$/|/' "$console_work/ours" "$console_work/peer" ;; esac
        count_equal "$console lists $file as 7zz does" "$console_work/ours" "$console_work/peer"
    done
    members_by_peer "$console_work/made.tar" | sed -E 's/\|[0-9a-f]*$/|/' >"$console_work/peer"
    for file in made.tgz made.tar.bz2 made.tar.Z; do
        $console list --json "$console_work/$file" | members_by_us | sed -E 's/\|[0-9a-f]*$/|/' >"$console_work/ours"
        count_equal "$console lists $file like the archive inside" "$console_work/ours" "$console_work/peer"
    done
    for file in single.gz single.bz2 single.Z; do
        name=$($console list --json "$console_work/$file" | tr -d '\r' | sed -n 's/.*"name":"\([^"]*\)".*/\1/p')
        [ "$name" = single ] && code=0 || code=1
        count_check "$console lists $file as one member" "$code"
    done
    for file in made.zip seven.zip made.tar plain.tar made.tgz made.tar.bz2 made.tar.Z single.gz single.bz2 single.Z locked.zip; do
        code=0
        $console test "$console_work/$file" >/dev/null || code=$?
        count_check "$console finds $file good" "$code"
    done

    # Damage in the data of a member, past its header: only reading it shows.
    head -c 3000 "$console_work/made.tgz" >"$console_work/short.tgz"
    code=0
    $console test "$console_work/short.tgz" >/dev/null 2>&1 || code=$?
    [ "$code" = 1 ] && code=0 || code=1
    count_check "$console finds a cut archive damaged" "$code"

    # Files that are no archives, whatever they are called.
    for extension in zip tar tgz gz bz2 z; do
        : >"$console_work/nothing.$extension"
        head -c 4096 /dev/zero | tr '\0' 'x' >"$console_work/noise.$extension"
        for file in nothing noise; do
            code=0
            $console list "$console_work/$file.$extension" >/dev/null 2>&1 || code=$?
            [ "$code" = 1 ] && code=0 || code=1
            count_check "$console refuses $file.$extension" "$code"
        done
    done
    code=0
    $console list >/dev/null 2>&1 || code=$?
    [ "$code" = 2 ] && code=0 || code=1
    count_check "$console wants an archive" "$code"
done
rm -rf "$console_work"
