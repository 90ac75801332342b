# Makes the packages from the products. Sourced, not run; expects scripts/common.sh.

# The one place that says the version is the project's own line.
package_version() { sed -n 's/^project(TovarEx VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt"; }

# Files get the time of the last commit, so that the same products give the same package. SOURCE_DATE_EPOCH says another.
package_time() {
    printf %s "${SOURCE_DATE_EPOCH:-$(git -C "$root" log -1 --format=%ct 2>/dev/null || echo 1577836800)}"
}

package_libraries=(UnZip32 Tar32 UnRar32 UnArj32j UnLha32 Cab32 UnAce InfoZip32)

# Texts are read with the system's editor, which wants its own line ends, and opens ".txt" by itself.
# $1: the source; $2: the target
stage_text() {
    mkdir -p "$(dirname "$2")"
    sed -E -e 's/\r$//' -e 's/]\(LICENSE\)/](LICENSE.txt)/' -e 's/]\(\.\.\/([A-Z-]+)\.md/](..\/\1.txt/g' \
        -e 's/$/\r/' "$1" >"$2"
}

# Puts together what a user gets, in the layout of the installed folder.
# $1: the folder, made anew; $2: the build folder of the products
stage_package() {
    local stage=$1 products=$2 library document example
    rm -rf "$stage"
    mkdir -p "$stage"
    cp "$products/bin/TovarEx.dll" "$products/bin/SampleHost.exe" "$products/bin/tovar.exe" "$stage"
    for library in "${package_libraries[@]}"; do cp "$products/bin/$library.dll" "$stage"; done
    cp "$products/src/front/win32/generated/tovar.tlb" "$stage/TovarEx.tlb"
    stage_text "$root/src/front/win32/TovarEx.manifest" "$stage/TovarEx.manifest"
    stage_text "$root/packaging/README.txt" "$stage/README.txt"
    stage_text "$root/LICENSE" "$stage/LICENSE.txt"
    for document in THIRD-PARTY-NOTICES CHANGELOG; do
        stage_text "$root/$document.md" "$stage/$document.txt"
    done
    for document in using installing host-interface automation archiver-libraries finding-libraries security unpacking \
        creating dependencies building; do
        stage_text "$root/docs/$document.md" "$stage/docs/$document.md"
    done
    for example in "$root"/examples/*.vbs "$root"/examples/*.js; do
        stage_text "$example" "$stage/examples/${example##*/}"
    done
    chmod -R u=rwX,go=rX "$stage"
}

# The ZIP holds one folder. Order, times and rights are always the same.
# $1: the staged folder; $2: the ZIP; $3: the version
make_zip() {
    local work
    work=$(mktemp -d "$2.XXXXXX")
    cp -r "$1" "$work/TovarEx-$3"
    rm -f "$2"
    (
        cd "$work"
        export TZ=UTC
        find . -exec touch -h -d "@$(package_time)" {} +
        find "TovarEx-$3" -type f | LC_ALL=C sort | zip -q -X -9 -@ "$work/made.zip"
    )
    mv "$work/made.zip" "$2"
    rm -rf "$work"
}

# A list of what is installed goes with it: later versions learn from it what is theirs. A line is size, checksum
# (CRC-32), rule and path; the rule is "user" for files that a user may have put another in place of, else "ours".
# $1: the ZIP; the list goes to standard output
list_package() {
    unzip -lv "$1" | awk '
        $7 ~ /^[0-9a-f]{8}$/ || ($7 ~ /^[0-9a-f]+$/ && length($7) == 8) {
            path = $8
            for (i = 9; i <= NF; ++i) path = path " " $i
            sub(/^[^\/]*\//, "", path)
            gsub(/\//, "\\", path)
            rule = (path ~ /^examples\\/ || (path ~ /^[A-Za-z0-9]+\.dll$/ && path != "TovarEx.dll")) ? "user" : "ours"
            print $1 "|" $7 "|" rule "|" path
        }'
}

# Turns the list into calls for the installer's script.
# $1: the list; $2: the file
write_installer_list() {
    {
        echo '!macro ForEachFile ACTION'
        awk -F'|' '{ printf "  !insertmacro ${ACTION} \"%s\" %s %s %s\n", $4, $1, $2, $3 }' "$1"
        echo '!macroend'
        echo '!macro ForEachFolder ACTION' # the innermost first
        awk -F'|' '{ path = $4; while (sub(/\\[^\\]*$/, "", path)) print path }' "$1" | sort -u | sort -r |
            sed 's/.*/  !insertmacro ${ACTION} "&"/'
        echo '!macroend'
        echo '!macro ForEachIdentity ACTION' # what a registration consists of, should the component itself be gone
        sed -n -E 's/^ *uuid\(([0-9a-f-]{36})\).*/  !insertmacro ${ACTION} "{\1}"/p' "$root/src/front/win32/tovar.idl"
        echo '!macroend'
        printf '!define CLASS_ID "{%s}"\n' "$(awk '/uuid\(/ { id = $0 } /coclass cTovar/ { print id; exit }' \
            "$root/src/front/win32/tovar.idl" | sed -E 's/.*uuid\(([0-9a-f-]*)\).*/\1/')"
    } >"$2"
}

# $1: the staged folder; $2: its ZIP; $3: the installer; $4: the version; the rest: further options for makensis
make_installer() {
    local stage=$1 archive=$2 setup=$3 version=$4 work
    shift 4
    work=$(mktemp -d "$setup.XXXXXX")
    cp -r "$stage" "$work/stage"
    list_package "$archive" >"$work/list"
    [ -s "$work/list" ] || fail "$archive could not be listed"
    sed 's/$/\r/' "$work/list" >"$work/stage/installed.txt"
    write_installer_list "$work/list" "$work/files.nsh"
    find "$work" -exec touch -h -d "@$(package_time)" {} +
    SOURCE_DATE_EPOCH=$(package_time) logged makensis makensis -V3 -WX -INPUTCHARSET UTF8 -DVERSION="$version" \
        -DSTAGE="$work/stage" -DFILES="$work/files.nsh" -DOUTPUT="$setup" \
        -DSIZE="$(du -sk --apparent-size "$work/stage" | cut -f1)" "$@" "$root/packaging/tovarex.nsi"
    rm -rf "$work"
}

# Makes both packages. $1: the build folder of the products; $2: the folder to put them into; the rest: further options
# for makensis
make_packages() {
    local version products=$1 dist=$2
    shift 2
    version=$(package_version)
    mkdir -p "$dist"
    stage_package "$dist/TovarEx" "$products"
    make_zip "$dist/TovarEx" "$dist/TovarEx-$version.zip" "$version"
    make_installer "$dist/TovarEx" "$dist/TovarEx-$version.zip" "$dist/TovarEx-$version-setup.exe" "$version" "$@"
    rm -rf "$dist/TovarEx"
}
