# What the pack dialog creates is unpacked by other programs, to the same bytes. Sourced by the test script.

creating_work=$build/create-test
rm -rf "$creating_work"
mkdir -p "$creating_work/made" "$creating_work/tree/sub/deep"
head -c 5000 /dev/zero | tr '\0' a >"$creating_work/tree/a.txt"
printf 'some text' >"$creating_work/tree/sub/b.txt"
head -c 70000 /dev/zero | tr '\0' '\1' >"$creating_work/tree/sub/deep/c.bin"

# The test of the dialog leaves copies of its archives.
TOVAREX_KEEP_ARCHIVES=$(windows_path "$creating_work/made") wine \
    "${TOVAREX_BIN:-$programs_folder}/win32_create_tests.exe" --gtest_filter='Kinds/CreateForReal.*:*.EncryptsForReal' \
    >"$build/logs/creating.log" 2>&1 </dev/null || true

# $1: what is checked; $2: the archive's extension; $3 and more: what unpacks it into the current folder
count_unpacked() {
    local out=$creating_work/out code=1
    rm -rf "$out"
    mkdir -p "$out"
    (cd "$out" && "${@:3}" "$creating_work/made/new.$2" >"$build/logs/creating-out.log" 2>&1) &&
        diff -r "$creating_work/tree" "$out" >"$build/logs/tree.diff" 2>&1 && code=0
    [ "$code" = 0 ] || cat "$build/logs/creating-out.log"
    count_check "$1" "$code"
}
count_unpacked 'unzip unpacks what the pack dialog creates' zip unzip -q
for kind in zip lzh cab; do
    count_unpacked "7zz unpacks the $kind that the pack dialog creates" "$kind" 7zz x -bso0
done
# A password that was entered in the dialog.
count_unpacked 'unzip unpacks the encrypted zip of the pack dialog' locked.zip unzip -q -P secret
count_unpacked '7zz unpacks the encrypted zip of the pack dialog' locked.zip 7zz x -bso0 -psecret
creating_code=0
7zz t -pwrong "$creating_work/made/new.locked.zip" >"$build/logs/creating-out.log" 2>&1 && creating_code=1
count_check 'another password does not unpack it' "$creating_code"
count_unpacked 'jlha unpacks the lzh that the pack dialog creates' lzh jlha xq

rm -rf "$creating_work"
