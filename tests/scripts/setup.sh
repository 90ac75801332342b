# What the scripts in the root say before they do anything. Sourced by the test script.

for script in run test bench package scripts/pictures scripts/wine-run; do
    code=0
    "$root/$script" --help >"$build/logs/help.log" 2>&1 || code=$?
    grep -q "$(basename "$script")" "$build/logs/help.log" || code=1
    count_check "$script --help says what it is for" "$code"
done
for line in 'run --unknown' 'test unknown' 'bench many' 'bench 3 unknown' 'bench 1 listing more' 'package unknown'; do
    read -ra words <<<"$line"
    code=0
    "$root/${words[0]}" "${words[@]:1}" >"$build/logs/help.log" 2>&1 || code=$?
    [ "$code" = 2 ] && grep -q "\./${words[0]}" "$build/logs/help.log" && code=0 || code=1
    count_check "./$line is refused" "$code"
done

# On another system nothing is tried; with everything there, the system does not matter.
printf 'ID=fedora\nVERSION_ID=41\n' >"$build/logs/os-release"
code=0
(TOVAREX_OS_RELEASE=$build/logs/os-release install_packages bash no-such-package) >"$build/logs/system.log" 2>&1 || code=$?
[ "$code" = 1 ] && grep -q '^!! This is built on Debian 12, and here is fedora 41\..*missing: no-such-package$' "$build/logs/system.log" &&
    code=0 || code=1
count_check "another system is told what is missing" "$code"
code=0
(TOVAREX_OS_RELEASE=$build/logs/os-release install_packages bash) >"$build/logs/system.log" 2>&1 || code=$?
count_check "another system that has everything is taken" "$code"
