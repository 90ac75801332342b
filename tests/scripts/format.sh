# The code's form is clang-format's business, where it is installed. Sourced by the test script.
if command -v clang-format >/dev/null; then
    code=0
    (cd "$root" && git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror) >"$build/logs/format.log" 2>&1 || code=$?
    [ "$code" = 0 ] || head -n 5 "$build/logs/format.log"
    count_check "every source is formatted" "$code"
fi
