# A short run of every fuzzer on damaged copies of its seeds. Sourced by the test script. Each run does the same; the
# preset "fuzz" is the way to look for more.

fuzz_seeds="fuzz_zip zip zip_members
fuzz_tar tar archivers
fuzz_rar rar
fuzz_arj arj
fuzz_lzh lzh
fuzz_lzh_encoder lzh
fuzz_cab cab
fuzz_ace ace
fuzz_commands commands"

while read -r fuzzer rooms; do
    folders=()
    for room in $rooms; do folders+=("$root/tests/data/$room"); done
    code=0
    timeout --kill-after=10 300 "$build/native-debug/bin/$fuzzer" -mutations=150 "${folders[@]}" \
        >"$build/logs/$fuzzer.log" 2>&1 </dev/null || code=$?
    [ "$code" = 0 ] || tail -n 20 "$build/logs/$fuzzer.log"
    count_check "$fuzzer comes to no harm" "$code"
done <<<"$fuzz_seeds"

# Each fuzzer has its row above.
for source in "$root"/fuzz/fuzz_*.cpp "$root"/fuzz/*/fuzz_*.cpp; do
    grep -q "^$(basename "$source" .cpp) " <<<"$fuzz_seeds" && code=0 || code=1
    count_check "$(basename "$source" .cpp) has seeds" "$code"
done
