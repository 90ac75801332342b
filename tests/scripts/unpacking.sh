# The console host unpacks what the public packers wrote, to the same bytes and times. Sourced by the test script.

unpacking_work=$build/unpack-test
rm -rf "$unpacking_work"
mkdir -p "$unpacking_work/tree/docs/old notes" "$unpacking_work/tree/src/lib" "$unpacking_work/names"
(
    cd "$unpacking_work/tree"
    seq 1 50000 >"docs/old notes/numbers.txt"
    printf 'comma\n' >"docs/a,b.txt"
    head -c 300000 /dev/zero >src/lib/zeros.bin
    seq 1 7 100000 | gzip -nc >src/lib/packed.bin
    printf 'one\n' >one.txt
    find . -exec touch -d '2001-05-17 17:30:58' {} +
    zip -q -r ../made.zip .
    zip -q -0 -r ../stored.zip .
    7zz a -bso0 -bsp0 ../seven.zip . >/dev/null
    7zz a -bso0 -bsp0 -mm=BZip2 ../bzip2.zip . >/dev/null
    tar -cf ../made.tar docs src one.txt
    tar --format=pax -cf ../pax.tar docs src one.txt
    tar -czf ../made.tgz docs src one.txt
    tar -cjf ../made.tar.bz2 docs src one.txt
    tar -cf - docs src one.txt | compress -c >../made.tar.Z
    arj a -r -y ../made.arj >/dev/null
    arj a -r -y -m4 ../fastest.arj >/dev/null
    arj a -r -y -v100k ../volumes.arj >/dev/null
    jlha aq ../made.lzh docs src one.txt >/dev/null
    find . -type f | sed 's,^\./,,' | xargs -d '\n' gcab -c -z ../made.cab
    find . -type f | sed 's,^\./,,' | xargs -d '\n' gcab -c ../stored.cab
    zip -q -r -P secret ../locked.zip .
    7zz a -bso0 -bsp0 -psecret -mem=AES256 ../aes.zip . >/dev/null
    arj a -r -y -gsecret ../locked.arj >/dev/null

    # Names of other alphabets, in the kinds that can hold them.
    cd ../names
    printf 'umlaut\n' >Größe.txt
    printf 'kanji\n' >表ソ.txt
    printf 'percent\n' >'100% & more; #1.txt'
    zip -q -r ../names.zip .
    tar -cf ../names.tar ./*
)

# $1: what is compared; $2 and $3: the folders
count_same_tree() {
    local same=0
    diff -r "$2" "$3" >"$build/logs/tree.diff" 2>&1 || same=1
    [ "$same" = 0 ] || head -n 10 "$build/logs/tree.diff"
    count_check "$1" "$same"
}

for console in native_tovar wine_tovar; do
    for file in made.zip stored.zip seven.zip bzip2.zip made.tar pax.tar made.tgz made.tar.bz2 made.tar.Z made.arj \
        fastest.arj volumes.arj made.lzh made.cab stored.cab; do
        rm -rf "$unpacking_work/out"
        $console extract --to "$unpacking_work/out" "$unpacking_work/$file" >"$build/logs/extract.log" 2>&1 || true
        count_same_tree "$console unpacks $file" "$unpacking_work/tree" "$unpacking_work/out"
        code=1
        [ "$(TZ=UTC stat -c %Y "$unpacking_work/out/one.txt" 2>/dev/null)" = "$(stat -c %Y "$unpacking_work/tree/one.txt")" ] && code=0
        count_check "$console gives back the times of $file" "$code"
    done
    for file in names.zip names.tar; do
        rm -rf "$unpacking_work/out"
        $console extract --to "$unpacking_work/out" "$unpacking_work/$file" >"$build/logs/extract.log" 2>&1 || true
        count_same_tree "$console unpacks the names of $file" "$unpacking_work/names" "$unpacking_work/out"
    done
    for file in locked.zip aes.zip locked.arj; do
        rm -rf "$unpacking_work/out"
        code=0
        $console extract --to "$unpacking_work/out" "$unpacking_work/$file" >"$build/logs/extract.log" 2>&1 </dev/null || code=$?
        [ "$code" = 1 ] && [ -z "$(find "$unpacking_work/out" -type f 2>/dev/null)" ] && code=0 || code=1
        count_check "$console leaves no file of $file without its password" "$code"
    done

    # One member, and everything flat.
    rm -rf "$unpacking_work/out"
    $console extract --flat --to "$unpacking_work/out" "$unpacking_work/made.zip" docs/a,b.txt >/dev/null 2>&1 || true
    [ "$(find "$unpacking_work/out" -type f)" = "$unpacking_work/out/a,b.txt" ] && code=0 || code=1
    count_check "$console unpacks one member without its folders" "$code"
    code=0
    $console extract --to "$unpacking_work/out" "$unpacking_work/made.zip" nothing.txt >/dev/null 2>&1 || code=$?
    [ "$code" = 4 ] && code=0 || code=1
    count_check "$console says that nothing matched" "$code"
done
rm -rf "$unpacking_work"
