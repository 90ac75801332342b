# Packing from and to a memory disk: sources and one member of 1 GiB, at each level, with the sizes that come of it, and
# the change of one member of a large archive. Sourced by the bench script.
#
# A kind adds its rows as the last lines do: pack_beside NAME INPUT then a label, an output and a command for each.

packing_target=$(mktemp -d "${TOVAREX_MEMORY_DISK:-/dev/shm}/tovarex-bench.XXXXXX")
trap 'rm -rf "$packing_target"' EXIT

# A command as a script, for it takes quotes and changes the folder. Prints how to run it.
# $1: label; $2: what to remove first, or nothing; $3: folder; $4: command
packing_script() {
    local script=$packing_target/$1.sh
    printf '%s\n' "cd '$3' || exit" "${2:+rm -f '$2'}" "exec $4 >/dev/null" >"$script"
    printf 'sh %s' "$script"
}

# $1: title; $2: folder to pack, the current one of every command; then triples of label, output file and command
pack_beside() {
    local title=$1 folder=$2 contenders=() outputs=() labels=() each
    shift 2
    while [ $# -gt 0 ]; do
        labels+=("$1")
        outputs+=("$2")
        contenders+=("$1" "$(packing_script "$1" "$2" "$folder" "$3")")
        shift 3
    done
    printf '   %s\n' "$title"
    "$bin/measure" "$runs" "${contenders[@]}"
    for each in "${!labels[@]}"; do
        [ -e "${outputs[$each]}" ] || fail "${labels[$each]} made no archive"
        printf '      %-25s %12d bytes\n' "${labels[$each]}" "$(stat -c %s "${outputs[$each]}")"
    done
    rm -f "${outputs[@]}"
}

# $1: input; $2: level
pack_zip() {
    local folder=$packing_target/$1 out=$packing_target level=$2
    pack_beside "$1, ZIP at level $level" "$folder" \
        "InfoZip32" "$out/ours.zip" "$bin/pack_zip $bin/InfoZip32.so $level $out/ours.zip" \
        "zip" "$out/zip.zip" "zip -q -r -$level $out/zip.zip ." \
        "7zz" "$out/7zz.zip" "7zz a -bd -tzip -mx=$level $out/7zz.zip ." \
        "bsdtar" "$out/bsdtar.zip" "bsdtar -c --format zip --options zip:compression-level=$level -f $out/bsdtar.zip ."
}

# $1: input
pack_cab() {
    local folder=$packing_target/$1 out=$packing_target
    pack_beside "$1, CAB" "$folder" \
        "Cab32" "$out/ours.cab" "$bin/tovar create $out/ours.cab ." \
        "gcab" "$out/gcab.cab" "sh -c \"find . -type f -printf '%P\\n' | xargs -x -d '\\n' -s 2000000 gcab -c -z $out/gcab.cab\""
}

# $1: input
pack_lzh() {
    local folder=$packing_target/$1 out=$packing_target
    pack_beside "$1, LZH" "$folder" \
        "UnLha32" "$out/ours.lzh" "$bin/tovar create $out/ours.lzh ." \
        "jlha" "$out/jlha.lzh" "jlha cq2o5 $out/jlha.lzh ."
}

say "Packing on a memory disk, beside peers"
for what in sources large; do
    cp -r "$(input $what)" "$packing_target/$what"
    for level in 0 1 6 9; do pack_zip $what $level; done
    pack_cab $what
done
# The peer would take minutes for the large member.
pack_lzh sources

say "Changing one member of an archive of 1 GiB"
mkdir "$packing_target/change"
echo changed >"$packing_target/change/changed.txt"
cp "$(input large)/large.txt" "$packing_target/change/large.txt"
(cd "$packing_target/change" && zip -q -0 "$packing_target/base.zip" large.txt changed.txt)
rm "$packing_target/change/large.txt"
change_one() {
    packing_script "$1" "" "$packing_target/change" "sh -c 'touch changed.txt; exec $2'"
}
"$bin/measure" "$runs" \
    "InfoZip32" "$(change_one InfoZip32 "$bin/pack_zip $bin/InfoZip32.so 6 $packing_target/base.zip changed.txt")" \
    "zip" "$(change_one zip "zip -q $packing_target/base.zip changed.txt")" \
    "7zz" "$(change_one 7zz "7zz u -bd $packing_target/base.zip changed.txt")"
rm -rf "$packing_target"
