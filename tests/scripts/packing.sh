# The console host creates and changes archives that other programs read to the same bytes, and reads them back itself.
# Sourced by the test script.

packing_work=$build/pack-test
rm -rf "$packing_work"
mkdir -p "$packing_work/tree/docs/old notes" "$packing_work/tree/src/lib" "$packing_work/names"
(
    cd "$packing_work/tree"
    seq 1 50000 >"docs/old notes/numbers.txt"
    printf 'comma\n' >"docs/a,b.txt"
    head -c 300000 /dev/zero >src/lib/zeros.bin
    seq 1 7 100000 | gzip -nc >src/lib/packed.bin
    : >empty.txt
    printf 'one\n' >one.txt
    printf 'umlaut\n' >../names/Größe.txt
    printf 'kanji\n' >../names/表ソ.txt
)

# Unpacks with another program. $1: the program; $2: the archive; $3: the folder
unpack_by_peer() {
    rm -rf "$3"
    mkdir -p "$3"
    case $1 in
        unzip) LC_ALL=C.UTF-8 unzip -q "$2" -d "$3" ;;
        7zz) LC_ALL=C.UTF-8 7zz x -bso0 -bsp0 -o"$3" "$2" ;;
        bsdtar) LC_ALL=C.UTF-8 bsdtar -x -f "$2" -C "$3" ;;
        cabextract) LC_ALL=C.UTF-8 cabextract -q -d "$3" "$2" ;;
        gcab) LC_ALL=C.UTF-8 gcab -C "$3" -x "$2" ;;
        lha) (cd "$3" && lha xq "$2") ;;
    esac >"$build/logs/peer.log" 2>&1 || true
}

# $1: what is compared; $2 and $3: the folders
count_same_packed() {
    local same=0
    diff -r "$2" "$3" >"$build/logs/tree.diff" 2>&1 || same=1
    [ "$same" = 0 ] || head -n 10 "$build/logs/tree.diff"
    count_check "$1" "$same"
}

# Runs the console host in a folder. $1: the console; $2: the folder; then its words. Answers with its code.
console_in() {
    local console=$1 folder=$2
    shift 2
    (cd "$folder" && $console "$@" >"$build/logs/pack.log" 2>&1)
}

for console in native_tovar wine_tovar; do
    for made in "zip 6 unzip 7zz bsdtar" "zip 0 unzip 7zz bsdtar" "zip 9 unzip 7zz bsdtar" "lzh 6 lha 7zz" "lzh 0 lha 7zz" \
        "cab 6 cabextract gcab 7zz bsdtar" "cab 0 cabextract gcab 7zz bsdtar"; do
        read -r kind level peers <<<"$made"
        file=$packing_work/made$level.$kind
        rm -f "$file"
        code=0
        console_in $console "$packing_work/tree" create --level "$level" "$file" docs src empty.txt one.txt || code=$?
        count_check "$console creates $kind at level $level" "$code"
        for peer in $peers; do
            unpack_by_peer "$peer" "$file" "$packing_work/out"
            count_same_packed "$peer unpacks what $console packed as $kind at level $level" "$packing_work/tree" "$packing_work/out"
        done
        rm -rf "$packing_work/out"
        console_in $console "$packing_work" extract --to "$packing_work/out" "$file" || true
        count_same_packed "$console unpacks its own $kind of level $level" "$packing_work/tree" "$packing_work/out"
    done

    # Names of other alphabets, in the kinds that can hold them whatever the system's code page is.
    for made in "zip unzip" "cab cabextract"; do
        read -r kind peer <<<"$made"
        file=$packing_work/names.$kind
        rm -f "$file"
        console_in $console "$packing_work/names" create "$file" . || true
        unpack_by_peer "$peer" "$file" "$packing_work/out"
        count_same_packed "$peer unpacks the names that $console packed as $kind" "$packing_work/names" "$packing_work/out"
    done

    # Archives of other programs are changed.
    rm -rf "$packing_work/changed"
    cp -r "$packing_work/tree" "$packing_work/changed"
    (cd "$packing_work/changed" && rm -f ../change.zip ../change.lzh && zip -q -r ../change.zip . && jlha aq ../change.lzh docs src empty.txt one.txt >"$build/logs/peer.log" 2>&1)
    printf 'changed\n' >"$packing_work/changed/one.txt"
    printf 'new\n' >"$packing_work/changed/docs/new.txt"
    for made in "zip unzip" "lzh lha"; do
        read -r kind peer <<<"$made"
        file=$packing_work/change.$kind
        code=0
        console_in $console "$packing_work/changed" add "$file" one.txt docs/new.txt || code=$?
        count_check "$console adds to another program's $kind" "$code"
        unpack_by_peer "$peer" "$file" "$packing_work/out"
        count_same_packed "$peer unpacks the $kind that $console added to" "$packing_work/changed" "$packing_work/out"
        code=0
        console_in $console "$packing_work/changed" delete "$file" docs/ one.txt || code=$?
        count_check "$console deletes from another program's $kind" "$code"
        unpack_by_peer "$peer" "$file" "$packing_work/out"
        rm -rf "$packing_work/rest"
        cp -r "$packing_work/changed" "$packing_work/rest"
        rm -rf "$packing_work/rest/docs" "$packing_work/rest/one.txt"
        count_same_packed "$peer unpacks the $kind that $console deleted from" "$packing_work/rest" "$packing_work/out"
    done

    # What is newer takes the place of what is there, and what is moved leaves the disk.
    rm -rf "$packing_work/changed" "$packing_work/moved.lzh"
    cp -r "$packing_work/tree" "$packing_work/changed"
    touch -d 2001-01-01 "$packing_work/changed/one.txt"
    code=0
    console_in $console "$packing_work/changed" create "$packing_work/moved.lzh" one.txt empty.txt || code=$?
    printf 'newer\n' >"$packing_work/changed/one.txt"
    console_in $console "$packing_work/changed" add --freshen "$packing_work/moved.lzh" one.txt docs || code=$?
    for peer in lha 7zz; do
        unpack_by_peer "$peer" "$packing_work/moved.lzh" "$packing_work/out"
        count_check "$peer finds what $console freshened" \
            "$([ "$(cat "$packing_work/out/one.txt")$(ls "$packing_work/out")" = "newerempty.txt
one.txt" ] && echo 0 || echo 1)"
    done
    cp -r "$packing_work/changed" "$packing_work/whole"
    console_in $console "$packing_work/changed" add --update "$packing_work/moved.lzh" one.txt src || code=$?
    console_in $console "$packing_work/changed" add --move "$packing_work/moved.lzh" docs || code=$?
    count_check "$console freshens, updates and moves" "$code"
    count_check "$console leaves nothing of what it moved" "$([ ! -e "$packing_work/changed/docs" ] && echo 0 || echo 1)"
    for peer in lha 7zz; do
        unpack_by_peer "$peer" "$packing_work/moved.lzh" "$packing_work/out"
        count_same_packed "$peer unpacks what $console updated and moved" "$packing_work/whole" "$packing_work/out"
    done
    rm -rf "$packing_work/whole"
done
rm -rf "$packing_work"
