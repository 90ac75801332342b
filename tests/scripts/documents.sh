# What the documents say is so: every command that they show works, every link leads somewhere, every file, name and test
# that they mention is there, and what they quote stands in the sources. Sourced by the test script.

document_work=$build/document-test
document_problems=$build/logs/documents.log
rm -rf "$document_work"
mkdir -p "$document_work"
: >"$document_problems"
mapfile -t documents < <(cd "$root" && ls ./*.md docs/*.md | sed 's,^\./,,')
(cd "$root" && awk -f tests/scripts/documents/parts.awk "${documents[@]}") >"$document_work/parts"

# The parts of one kind: FILE TAB LINE TAB TEXT.
# $1: the kind, a pattern
parts_of() { awk -F '\t' -v kind="^($1)\$" '$3 ~ kind { print $1 "\t" $2 "\t" $4 }' "$document_work/parts"; }

# $1: the document; $2: its line; $3: what is wrong there
document_problem() { printf '%s:%s: %s\n' "$@" >>"$document_problems"; }

# Counts one kind of checks, which have written down what is wrong.
# $1: what the documents do when nothing is; $2: what was looked at; a kind without anything to look at has been lost
count_documents() {
    local code=0
    [ ! -s "$document_problems" ] || code=1
    [ "$2" -gt 0 ] || { code=1 && echo "nothing was found to check" >>"$document_problems"; }
    [ "$code" = 0 ] || sed 's/^/   /' "$document_problems"
    count_check "the documents $1 ($2)" "$code"
    : >"$document_problems"
}

# --- Their form, their links, and the files that they name

while IFS=$'\t' read -r document line text; do document_problem "$document" "$line" "$text"; done < <(parts_of wrong)
count_documents "have a form that can be checked" "${#documents[@]}"

links=0
while IFS=$'\t' read -r document line target; do
    links=$((links + 1))
    [[ "$target" != http*://* ]] || continue
    file=${target%%#*}
    if [ -z "$file" ]; then file=$document; else file=$(dirname "$document")/$file; fi
    file=$(realpath -m --relative-to="$root" "$root/$file")
    if [ ! -e "$root/$file" ]; then
        document_problem "$document" "$line" "there is no $target"
    elif [[ "$target" == *#* ]]; then
        grep -qxF "$file"$'\t'"${target#*#}" <<<"$(parts_of anchor | cut -f 1,3)" ||
            document_problem "$document" "$line" "$file has no heading for #${target#*#}"
    fi
done < <(parts_of link)
count_documents "have links that lead somewhere" "$links"

# "<...>" stands for any name. A source may be named without its extension. What is built is not there before.
names=0
while IFS=$'\t' read -r document line text; do
    case $text in
    build/* | *' '*) continue ;;
    src/* | archivers/* | host/* | tests/* | fuzz/* | benchmarks/* | cmake/* | scripts/* | packaging/* | docs/* | samples/* | examples/*) ;;
    *) continue ;;
    esac
    [[ "$text" != docs/\*.\* && "$text" != docs/\* ]] || continue # patterns in archives
    names=$((names + 1))
    pattern=$(sed -E 's/<[^>]*>/*/g' <<<"$text")
    (cd "$root" && { compgen -G "$pattern" || compgen -G "$pattern.*"; }) >/dev/null ||
        document_problem "$document" "$line" "there is no $text"
done < <(parts_of span)
count_documents "name files and folders that are there" "$names"

# Every test, as the test programs name it: Suite.Test.
(cd "$root" && git ls-files -co --exclude-standard 'tests/*.cpp' | xargs cat | tr '\n' ' ' |
    grep -oE 'TEST(_F|_P)?\( *[A-Za-z0-9_]+, *[A-Za-z0-9_]+ *\)' | sed -E 's/.*\( *([A-Za-z0-9_]+), *([A-Za-z0-9_]+).*/\1.\2/') \
    >"$document_work/tests"
# Every word of the sources, and every name of a file and a folder with and without its extension.
(
    cd "$root"
    cat "$document_work/tests"
    git ls-files -co --exclude-standard -- ':!tests/data' | tee "$document_work/files" | tr / '\n' |
        sed -E 'p; s/\.[^.]*$//'
    grep -vE '\.(md|png|svg|zip|gz)$' "$document_work/files" | xargs -d '\n' cat | grep -aoE '[A-Za-z_][A-Za-z0-9_.]*' |
        sed -E 'p; s/\.$//; s/\./\n/g'
) | LC_ALL=C sort -u >"$document_work/words"
while IFS=$'\t' read -r document line text; do
    [[ "$text" =~ ^[A-Za-z_][A-Za-z0-9_.]{3,}(\(\))?$ ]] || continue
    printf '%s\t%s:%s\n' "${text%()}" "$document" "$line"
done < <(parts_of span) | LC_ALL=C sort -u >"$document_work/names"
names=$(wc -l <"$document_work/names")
while IFS=$'\t' read -r text place; do
    document_problem "${place%:*}" "${place##*:}" "nothing is called $text"
done < <(LC_ALL=C join -t $'\t' -v 1 "$document_work/names" "$document_work/words")
count_documents "use names that the sources have" "$names"

# --- What they quote

# Consecutive lines of a source that a test runs or compiles, whatever their indentation.
quoted_somewhere() {
    local quote=$1 file
    while IFS= read -r file; do
        [[ "$(sed -E 's/^[ \t]+//; s/[ \t\r]+$//' "$root/$file" | tr '\n' '\001')" != *"$quote"* ]] || return 0
    done < <(cd "$root" && git ls-files -co --exclude-standard -- 'tests/win32/*' 'examples/*' 'src/*' 'archivers/*' 'host/*' 'tests/*.sh' \
        'tests/*.cpp' 'tests/*.txt' 'cmake/*' 'CMakeLists.txt' | xargs -d '\n' grep -lF -- "$(tr '\001' '\n' <<<"$quote" | head -n 1)")
    return 1
}
quotes=0
quote=
while IFS=$'\t' read -r document line what text; do
    case $what in
    code:text | end:text) ;;
    code:*) quote+=$(sed -E 's/^[ \t]+//; s/[ \t]+$//' <<<"$text")$'\001' ;;
    end:*)
        quotes=$((quotes + 1))
        quoted_somewhere "$quote" || document_problem "$document" "$line" "no source has the block that ends here"
        quote=
        ;;
    esac
done <"$document_work/parts"
count_documents "quote what the sources say" "$quotes"

# --- Their commands

# What the archives and folders are that the documents' commands name.
document_scratch() {
    mkdir -p "$1/2023" "$1/2024/summer" "$1/papers"
    echo 'snow' >"$1/2023/winter.jpg"
    echo 'sea' >"$1/2024/summer/beach.jpg"
    echo 'leaves' >"$1/2024/autumn.jpg"
    echo 'letter' >"$1/papers/letter.txt"
}

# What must hold once a command has run: what another program says of it.
declare -A after_command=(
    ['tovar create photos.zip 2023 2024']='[ "$(unzip -Z1 photos.zip | grep -v /$ | sort | paste -sd " ")" = "2023/winter.jpg 2024/autumn.jpg 2024/summer/beach.jpg" ]'
    ['tovar list photos.zip']='grep -q winter.jpg output && grep -q beach.jpg output'
    ['tovar extract --to out photos.zip 2024/']='diff -r 2024 out/2024 && [ "$(ls out)" = 2024 ]'
    ['tovar add --update photos.zip 2024']='unzip -tqq photos.zip'
    ['tovar delete photos.zip 2023/']='[ "$(unzip -Z1 photos.zip | grep -v /$ | sort | paste -sd " ")" = "2024/autumn.jpg 2024/summer/beach.jpg" ]'
    ['tovar create --level 9 --password papers.zip papers']='[ "$(unzip -P secret -p papers.zip papers/letter.txt)" = letter ] && ! unzip -P other -tqq papers.zip'
)

# Runs a command on a terminal whose user answers every question with the same password.
with_password() {
    local code=0
    trap '' PIPE # the program may end before it has read all answers
    coproc password_user { exec script -qefc "$*" /dev/null 2>&1; }
    local pid=$password_user_PID in=${password_user[1]} out=${password_user[0]} answer
    # An answer that comes before the question is thrown away, so it is given until the program ends.
    while kill -0 "$pid" 2>/dev/null; do
        printf 'secret\n' 2>/dev/null >&"$in" || true
        read -r -t 0.2 -u "$out" answer 2>/dev/null || true
    done
    wait "$pid" || code=$?
    return "$code"
}

# $1: the document; $2: its line; $3: the command
run_tovar() {
    local folder=$document_work/${1//\//-} code=0
    [ -d "$folder" ] || document_scratch "$folder"
    (
        cd "$folder"
        PATH=$build/native-debug/bin:$PATH
        if [[ " $3 " == *' --password '* ]]; then with_password "$3"; else eval "$3"; fi
    ) >"$folder/output" 2>&1 </dev/null || code=$?
    if [ "$code" != 0 ]; then
        document_problem "$1" "$2" "\"$3\" ends with $code: $(tail -n 1 "$folder/output")"
    elif [ -n "${after_command[$3]:-}" ]; then
        (cd "$folder" && eval "${after_command[$3]}") >"$build/logs/after-command.log" 2>&1 ||
            document_problem "$1" "$2" "\"$3\" does not do what it should"
    fi
}

# A script of the project: it is there, and its own help knows every option that is shown.
# $1: the document; $2: its line; $3: the command; $4: whether it stands in a block
check_script() {
    local words option usage
    read -ra words <<<"$3"
    if [ ! -x "$root/${words[0]}" ]; then
        [ "${#words[@]}" = 1 ] && [ -e "$root/${words[0]}" ] || document_problem "$1" "$2" "${words[0]} cannot be run"
        return
    fi
    usage=$("$root/${words[0]}" --help 2>&1) || document_problem "$1" "$2" "${words[0]} has no --help"
    for option in "${words[@]:1}"; do
        [[ "$option" != -* ]] || grep -qE -- "(^|[^a-z-])$option([^a-z-]|$)" <<<"$usage" ||
            document_problem "$1" "$2" "${words[0]} --help does not know $option"
    done
    # What newcomers are told to type is run as it is shown.
    if [ "${words[0]}" = ./run ] && [ "$4" = yes ]; then
        grep -qxF "    '$3'" "$root/tests/scripts/run.sh" || document_problem "$1" "$2" "tests/scripts/run.sh does not run \"$3\""
    fi
}

# A preset that is there, and targets that it has.
check_cmake() {
    local preset target targets
    preset=$(sed -nE 's,.*(--preset |--build build/)([a-z0-9-]+).*,\2,p' <<<"$3")
    grep -qF "\"$preset\"" <<<"$(cd "$root" && cmake --list-presets=configure)" ||
        document_problem "$1" "$2" "there is no preset for \"$3\""
    targets=$(sed -nE 's,.*--target ([a-zA-Z0-9_ ]+).*,\1,p' <<<"$3")
    [ -e "$build/$preset/build.ninja" ] || preset=native-debug
    for target in $targets; do
        ninja -C "$build/$preset" -t query "$target" >/dev/null 2>&1 || document_problem "$1" "$2" "there is no target $target"
    done
}

# The registration of the component is tested with the same switches.
check_regsvr32() {
    local switches
    switches=$(sed -E 's/^regsvr32//; s/ *TovarEx\.dll$//' <<<"$3")
    grep -qF "L\"regsvr32.exe /s$switches\"" "$root/tests/win32/front/registration_test.cpp" ||
        document_problem "$1" "$2" "no test runs \"$3\""
}

# Any other command is one that a script of the tests runs, to the letter.
check_tested() {
    grep -qhF -- "$3" "$root"/tests/scripts/*.sh "$root"/scripts/* "$root"/packaging/*.sh ||
        document_problem "$1" "$2" "no test knows the command \"$3\""
}

# $4: whether it stands in a block of commands; only there are unknown ones no commands after all
check_command() {
    case $3 in
    'tovar '*) run_tovar "$@" ;;
    ./run* | ./test* | ./bench* | ./package* | scripts/*) check_script "$@" ;;
    'cmake '*) check_cmake "$@" ;;
    'regsvr32 '*) check_regsvr32 "$@" ;;
    *) [ "$4" = no ] || check_tested "$@" ;;
    esac
}
commands=0
while IFS=$'\t' read -r document line text; do
    commands=$((commands + 1))
    check_command "$document" "$line" "$text" yes
done < <(parts_of sh)
while IFS=$'\t' read -r document line text; do check_command "$document" "$line" "$text" no; done < <(parts_of span)
count_documents "show commands that work" "$commands"

# --- What they list

products=$(sed -nE 's/.*add_custom_target\(products DEPENDS (.*)\)/\1/p' "$root/CMakeLists.txt" | tr ' ' '\n' | sort -u)
for product in $products; do
    grep -qF "\`$product" "$root/README.md" || document_problem README.md 1 "$product is a product and not listed"
done
count_documents "list every product" "$(wc -w <<<"$products")"

# What is linked in has its licence in the notices, word for word as its source has it.
notices=$root/THIRD-PARTY-NOTICES.md
dependencies=$(sed -nE 's/^build_([a-z0-9]+)\(\).*/\1/p' "$root/scripts/dependencies.sh" | grep -vxE 'idl|dependencies')
for dependency in $dependencies; do
    grep -q "^| $dependency " "$root/docs/dependencies.md" ||
        document_problem docs/dependencies.md 1 "$dependency is built and not listed"
    grep -qx "## $dependency" "$notices" || document_problem "$(basename "$notices")" 1 "$dependency has no section"
    licence=$(compgen -G "$deps/src/$dependency/COPYING.LIB" || compgen -G "$deps/src/$dependency/COPYING" ||
        compgen -G "$deps/src/$dependency/LICENSE") || licence=/dev/null
    text=$(sed -E 's/[ \t\r\f]+$//' "$licence")
    [ -n "$text" ] && [[ "$(<"$notices")" == *"$text"* ]] ||
        document_problem "$(basename "$notices")" 1 "the licence of $dependency differs from that in its source"
done
for section in zlib 'GCC runtime' 'MinGW-w64 runtime' winpthreads NSIS; do
    grep -qx "## $section" "$notices" || document_problem "$(basename "$notices")" 1 "$section has no section"
done
count_documents "list every dependency" "$(wc -w <<<"$dependencies")"

version=$(sed -nE 's/^project\(TovarEx VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
[ "$(grep -m 1 '^## ' "$root/CHANGELOG.md")" = "## $version" ] ||
    document_problem CHANGELOG.md 1 "the newest version is not the project's, $version"
count_documents "know the version" 1

rm -rf "$document_work"
