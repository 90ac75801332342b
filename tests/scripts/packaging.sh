# The packages: what is in them, and what installing, upgrading and removing does to files and registry. In a Wine prefix
# of its own, which goes again. Sourced by the test script.
. "$root/packaging/package.sh"

packaging_work=$build/packaging-test
packaging_stage=$packaging_work/stage
packaging_version=$(package_version)
# Where the tests take the products from; TOVAREX_PRODUCTS names another build.
packaging_products=${TOVAREX_PRODUCTS:-$build/win32-release}
umount "$packaging_work/disk" 2>/dev/null || true # of a run that was broken off
rm -rf "$packaging_work"
mkdir -p "$packaging_work"

# $1: what it says; the rest: a command that is to succeed
check() {
    local text=$1 code=0
    shift
    "$@" >"$packaging_work/check.log" 2>&1 || code=1
    [ "$code" = 0 ] || head -n 10 "$packaging_work/check.log"
    count_check "$text" "$code"
}
same() { diff "$1" "$2"; }
is() { [ "$1" = "$2" ] || { echo "\"$1\" instead of \"$2\"" && false; }; }
gone() { [ ! -e "$1" ] || { echo "$1 is there" && false; }; }

# --- What is in the packages

SOURCE_DATE_EPOCH=$(package_time) # one time for all, whatever is committed meanwhile
make_packages "$packaging_products" "$packaging_work" -DFAST # only the packing is quicker than for users
packaging_zip=$packaging_work/TovarEx-$packaging_version.zip
packaging_setup=$packaging_work/TovarEx-$packaging_version-setup.exe
stage_package "$packaging_stage" "$packaging_products"
make_zip "$packaging_stage" "$packaging_work/again.zip" "$packaging_version"
check "the ZIP is the same when it is made again" cmp "$packaging_zip" "$packaging_work/again.zip"
unzip -Z1 "$packaging_zip" >"$packaging_work/names"
for name in TovarEx.dll TovarEx.tlb TovarEx.manifest UnZip32.dll Tar32.dll UnRar32.dll UnArj32j.dll UnLha32.dll \
    Cab32.dll UnAce.dll InfoZip32.dll SampleHost.exe tovar.exe LICENSE.txt README.txt docs/installing.md \
    docs/host-interface.md; do
    check "the ZIP holds $name" grep -Fx "TovarEx-$packaging_version/$name" "$packaging_work/names"
done
check "the ZIP lists its files in order" same <(LC_ALL=C sort "$packaging_work/names") "$packaging_work/names"

# Prints the links of the packed documents that lead to nothing.
dead_links() {
    local document link
    while IFS= read -r document; do
        while IFS= read -r link; do
            [ -e "$(dirname "$document")/$link" ] || echo "${document#"$packaging_stage/"}: $link"
        done < <(grep -oE '\]\([^)#]+' "$document" | sed 's/^](//' | grep -v '^https\?:')
    done < <(find "$packaging_stage" -name '*.md' -o -name '*.txt')
}
check "every link of a packed document leads to a packed one" is "$(dead_links)" ""
check "the packed documents have links" grep -qF '](unpacking.md' "$packaging_stage/docs/security.md"
check "the component's version is the package's" \
    is "$(strings -el "$packaging_stage/TovarEx.dll" | grep -A 1 -Fx ProductVersion | tail -n 1)" "$packaging_version.0"

# Other versions of the installer: an older one with files that this one lacks, and one whose component is broken.
# $1: its version; $2: the component
make_small_installer() {
    local stage=$packaging_work/stage-$1
    mkdir -p "$stage/docs" "$stage/legacy"
    cp "$2" "$stage/TovarEx.dll"
    echo "library of $1" >"$stage/UnRar32.dll"
    echo "library of $1" >"$stage/UnAce.dll"
    echo "library of $1" >"$stage/Old32.dll"
    echo "readme of $1" >"$stage/README.txt"
    echo "page of $1" >"$stage/docs/old page.md"
    echo "page of $1" >"$stage/legacy/page.md"
    make_zip "$stage" "$packaging_work/$1.zip" "$1"
    make_installer "$stage" "$packaging_work/$1.zip" "$packaging_work/$1-setup.exe" "$1" -DFAST
}
make_small_installer 0.9.0 "$packaging_stage/TovarEx.dll"
make_small_installer 2.0.0 "$root/LICENSE"
make_installer "$packaging_work/stage-0.9.0" "$packaging_work/0.9.0.zip" "$packaging_work/again-setup.exe" 0.9.0 -DFAST
check "the installer is the same when it is made again" \
    cmp "$packaging_work/0.9.0-setup.exe" "$packaging_work/again-setup.exe"

unset SOURCE_DATE_EPOCH

# --- In Windows

packaging_prefix_before=$WINEPREFIX
packaging_overrides_before=$WINEDLLOVERRIDES
stop_wine_server() {
    quiet wineserver -k || true
    quiet wineserver -w || true
}
stop_wine_server # so that the registry to copy is on the disk
rm -rf "$WINEPREFIX-packaging"
use_copied_prefix packaging
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winemenubuilder.exe=d" # no entries in the menus of the machine's own desktop
start_wine_server

drive=$WINEPREFIX/drive_c
me=$(id -un)
local_programs=$drive/users/$me/AppData/Local/Programs
own_folder=$local_programs/TovarEx
own_windows_folder="C:\\users\\$me\\AppData\\Local\\Programs\\TovarEx"
start_menu="AppData/Roaming/Microsoft/Windows/Start Menu/Programs/TovarEx Sample Host.lnk"
uninstall_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\TovarEx'
class_key='Software\Classes\CLSID\{F0F74181-FAFF-4A05-A39F-3E515C05E3BB}\InprocServer32'

# Runs a program and sets $code to its exit code. The rest: program and arguments
run_windows() {
    code=0
    timeout 100 wine "$@" </dev/null >"$packaging_work/program.log" 2>&1 || code=$?
}
# Installs. $1: what is checked; $2: the expected exit code; $3: the program; the rest: its arguments
run_setup() {
    local text=$1 expected=$2 code
    shift 2
    run_windows "$@"
    check "$text" is "$code" "$expected"
}

# Prints a registry value. $1: the key; $2: the value's name, or nothing for the key's own
registry_value() {
    local which=(/ve)
    [ -z "${2:-}" ] || which=(/v "$2")
    timeout 60 wine reg query "$1" "${which[@]}" </dev/null 2>/dev/null | tr -d '\r' |
        sed -n -E 's/^ +.* +REG_[A-Z_]+ +//p' || true
}
registry_lacks() { is "$(registry_value "$@")" ""; }
registry_delete_settings() {
    local hive
    for hive in HKCU HKLM; do run_windows reg delete "$hive\\SOFTWARE\\Vantrel" /f; done
    run_windows reg delete 'HKCU\Software\TovarEx' /f
}
# $1: the expected exit code; the rest: the program and its arguments
setup_ends() {
    local expected=$1 code
    shift
    run_windows "$@"
    is "$code" "$expected"
}
set_setting() { wine_registry "$1\\SOFTWARE\\Vantrel\\Config" /v ArchiverSetting /t REG_DWORD /d 1023; }

# What is on the disk and in the registry. Left out: the keys' time stamps; the date of the display's driver, which Wine
# writes anew whenever its desktop starts; and the list of files to remove at the next start, which is gone after it.
# $1: the name of the picture
take_state() {
    stop_wine_server # it writes the registry down
    (cd "$drive" && find . | LC_ALL=C sort) >"$packaging_work/$1.files"
    for hive in user system; do
        sed -E -e '/^(#time=|"DriverDateData"=|"PendingFileRenameOperations"=)/d' -e 's/^(\[.*\]) [0-9]+$/\1/' "$WINEPREFIX/$hive.reg" >"$packaging_work/$1.$hive"
    done
    start_wine_server
}
# $1: what is checked; $2 and $3: pictures
count_same_state() {
    check "$1: files" same "$packaging_work/$2.files" "$packaging_work/$3.files"
    check "$1: the user's registry" same "$packaging_work/$2.user" "$packaging_work/$3.user"
    check "$1: the machine's registry" same "$packaging_work/$2.system" "$packaging_work/$3.system"
}
# Files of a folder with their contents. $1: the folder; $2: the file
folder_state() { (cd "$1" && find . -type f -exec sha256sum {} + | LC_ALL=C sort -k2) >"$2" 2>/dev/null || : >"$2"; }

# A script that creates the object late-bound and asks it; all other endings than that of the last line are failures.
cat >"$drive/ask.vbs" <<'SCRIPT'
On Error Resume Next
answer = CreateObject("TovarEx.cTovar").CanCreateArchive
If Err.Number <> 0 Then WScript.Quit 11
If Not answer Then WScript.Quit 12
WScript.Quit 77
SCRIPT
script_answers() {
    local code=0
    run_windows cscript //nologo 'C:\ask.vbs'
    is "$code" 77
}
no_script_answers() { ! script_answers; }

# Waits until no file has any of the names any more. The names; a "*" stands for anything
wait_until_gone() {
    local try name left
    for try in $(seq 100); do
        left=no
        for name in "$@"; do
            if compgen -G "$name"; then left=yes; fi
        done
        [ "$left" = yes ] || return 0
        sleep 0.1
    done
    return 1
}

# --- For one user, without a switch

# Copies of uninstallers, wherever the prefix has its folder for temporary files.
copies=("$drive/windows/temp/~nsu*" "$drive/users/*/Temp/~nsu*" "$drive/users/*/AppData/Local/Temp/~nsu*")
rm -rf "$drive"/windows/temp/~nsu* "$drive"/users/*/Temp/~nsu* "$drive"/users/*/AppData/Local/Temp/~nsu*
take_state before
run_setup "installs silently" 0 "$packaging_setup" /S
take_state installed
(cd "$own_folder" && find . -type f | LC_ALL=C sort) >"$packaging_work/there"
(
    sed 's/^TovarEx-[^/]*/./' "$packaging_work/names"
    printf './installed.txt\n./uninstall.exe\n'
) | LC_ALL=C sort >"$packaging_work/expected"
check "installs the package's files" same "$packaging_work/expected" "$packaging_work/there"
check "one user's installation leaves the machine's registry alone" \
    same "$packaging_work/before.system" "$packaging_work/installed.system"
check "the class is the user's" is "$(registry_value "HKCU\\$class_key")" "$own_windows_folder\\TovarEx.dll"
check "the entry has the version" is "$(registry_value "HKCU\\$uninstall_key" DisplayVersion)" "$packaging_version"
check "the entry has the publisher" is "$(registry_value "HKCU\\$uninstall_key" Publisher)" "TovarEx project"
check "the entry has the quiet command" is "$(registry_value "HKCU\\$uninstall_key" QuietUninstallString)" \
    "\"$own_windows_folder\\uninstall.exe\" /S"
size=$(registry_value "HKCU\\$uninstall_key" EstimatedSize)
check "the entry has the size in kilobytes" test "$((${size:-0}))" -gt 10000 -a "$((${size:-0}))" -lt 100000
check "the start menu has the sample host" test -e "$drive/users/$me/$start_menu"

run_setup "installs a second time" 0 "$packaging_setup" /S
take_state again
count_same_state "the second installation changes nothing" installed again

# Windows shows a user's classes and the machine's as one; Wine's view has the machine's only. A copy stands in.
sed -n -E '/^\[Software\\\\Classes\\\\/,/^$/p' "$packaging_work/installed.user" |
    sed -E 's/^\[(.*)\]$/[HKEY_LOCAL_MACHINE\\\1]/; /^\[/s/\\\\/\\/g; 1i REGEDIT4\n' >"$drive/classes.reg"
check "a script does not find the class without its registration" no_script_answers
run_windows regedit 'C:\classes.reg'
check "a script uses the class with what one user's registration holds" script_answers
(
    printf 'REGEDIT4\n\n'
    sed -n -E 's/^\[(HKEY_LOCAL_MACHINE\\Software\\Classes\\(TovarEx\.cTovar|[A-Za-z]+\\\{[^}]*\})).*/[-\1]/p' \
        "$drive/classes.reg" | sort -u
) >"$drive/no_classes.reg"
run_windows regedit 'C:\no_classes.reg'
rm "$drive/classes.reg" "$drive/no_classes.reg"

set_setting HKCU
run_windows "$own_folder/uninstall.exe" /S
check "the uninstaller starts" is "$code" 0
check "the uninstaller goes itself, and every folder that was made" wait_until_gone "$local_programs"
check "the uninstaller leaves no copy of itself" wait_until_gone "${copies[@]}"
check "the setting stays" is "$(registry_value 'HKCU\SOFTWARE\Vantrel\Config' ArchiverSetting)" 0x3ff
check "the entry goes" registry_lacks "HKCU\\$uninstall_key" DisplayVersion
check "the class goes" registry_lacks "HKCU\\$class_key"
run_setup "removing what is not there is no error" 0 "$packaging_setup" /S /Uninstall

# --- For everybody, into a path with blanks and letters of other alphabets

wide_folder="$drive/Program files 日本/Tovar é"
wide_windows_folder='C:\Program files 日本\Tovar é'
registry_delete_settings
take_state before
run_setup "installs for everybody into the folder of /D=" 0 "$packaging_setup" /S /AllUsers "/D=$wide_windows_folder"
run_windows reg export "HKLM\\$class_key" 'C:\class.reg' /y # reg query writes in a code page without these letters
check "the class is the machine's" grep -Fx "@=\"${wide_windows_folder//\\/\\\\}\\\\TovarEx.dll\"" \
    <(iconv -f UTF-16 -t UTF-8 "$drive/class.reg" | tr -d '\r')
rm "$drive/class.reg"
check "the class is not the user's" registry_lacks "HKCU\\$class_key"
check "a script uses the class" script_answers
check "a folder of everybody's is refused for one user" setup_ends 7 "$packaging_setup" /S "/D=$wide_windows_folder"

# A host has the component loaded. "stays as it is" compares every byte.
folder_state "$wide_folder" "$packaging_work/held"
TOVAREX_BIN=$wide_folder start_host "$root/samples/welcome.zip"
check "the installed sample host shows an archive" test "${report#the archive is shown}" != "$report"
run_setup "an upgrade is refused while a host has the component" 3 "$packaging_work/0.9.0-setup.exe" /S /AllUsers
run_setup "the removal is refused while a host has the component" 3 "$packaging_setup" /S /AllUsers /Uninstall
folder_state "$wide_folder" "$packaging_work/now"
check "the installation stays as it is while a host has the component" same "$packaging_work/held" "$packaging_work/now"
check "the registration stays as it is" script_answers
stop_host
run_setup "the setup program removes, with the setting" 0 "$packaging_setup" /S /AllUsers /Uninstall /RemoveSettings
take_state after
count_same_state "nothing is left of everybody's installation" before after

# --- Upgrades, and what a user has put into the folder

run_setup "installs an older version" 0 "$packaging_work/0.9.0-setup.exe" /S
echo "another's library" >"$own_folder/UnRar32.dll" # in the place of ours
echo "another's library" >"$own_folder/Mine32.dll"
folder_state "$own_folder" "$packaging_work/older"
run_setup "a component that cannot be registered ends in its exit code" 5 "$packaging_work/2.0.0-setup.exe" /S
folder_state "$own_folder" "$packaging_work/now"
check "what failed is taken back" same "$packaging_work/older" "$packaging_work/now"
check "the older version stays registered" is "$(registry_value "HKCU\\$class_key")" "$own_windows_folder\\TovarEx.dll"
check "the older version stays the entry" is "$(registry_value "HKCU\\$uninstall_key" DisplayVersion)" 0.9.0
# A run that was interrupted: one file is aside, another has come.
mkdir -p "$own_folder/TovarEx.setup/old" "$own_folder/TovarEx.setup/new"
mv "$own_folder/README.txt" "$own_folder/TovarEx.setup/old"
echo new >"$own_folder/docs/new.md"
printf 'M|README.txt\r\nP|docs\\new.md\r\n' >"$own_folder/TovarEx.setup/journal.txt"
run_setup "after an interrupted run the next one fails as before" 5 "$packaging_work/2.0.0-setup.exe" /S
folder_state "$own_folder" "$packaging_work/now"
check "the interrupted run is taken back" same "$packaging_work/older" "$packaging_work/now"
run_setup "upgrades" 0 "$packaging_setup" /S
check "the entry is the new version's" is "$(registry_value "HKCU\\$uninstall_key" DisplayVersion)" "$packaging_version"
for file in Old32.dll legacy "docs/old page.md" TovarEx.setup; do
    check "the upgrade removes $file" gone "$own_folder/$file"
done
check "the upgrade brings its own libraries" cmp "$packaging_stage/UnAce.dll" "$own_folder/UnAce.dll"
check "the upgrade keeps a user's library in the place of ours" \
    is "$(cat "$own_folder/UnRar32.dll")" "another's library"
check "there is one entry" is "$(stop_wine_server && grep -c '^\[Software.*Uninstall\\\\TovarEx\]' "$WINEPREFIX/user.reg")" 1
start_wine_server
# Another folder: the installation moves.
run_setup "an upgrade into another folder" 0 "$packaging_work/0.9.0-setup.exe" /S '/D=C:\moved'
check "the installation has moved" test -e "$drive/moved/TovarEx.dll"
check "the old folder keeps the user's libraries only" is "$(ls "$own_folder" | tr '\n' ' ')" "Mine32.dll UnRar32.dll "
check "the class has moved" is "$(registry_value "HKCU\\$class_key")" 'C:\moved\TovarEx.dll'
run_setup "everybody's installation takes the place of one's own" 0 "$packaging_work/0.9.0-setup.exe" /S /AllUsers
check "one's own goes" gone "$drive/moved"
check "one's own entry goes" registry_lacks "HKCU\\$uninstall_key" DisplayVersion
check "everybody's entry comes" is "$(registry_value "HKLM\\$uninstall_key" DisplayName)" "TovarEx (all users)"
run_setup "everybody's goes" 0 "$packaging_setup" /S /AllUsers /Uninstall
echo "another's" >"$own_folder/README.txt"
run_setup "another's file is not overwritten" 7 "$packaging_setup" /S
check "a folder with another's files stays as it is" \
    is "$(ls "$own_folder" | tr '\n' ' ')" "Mine32.dll README.txt UnRar32.dll "
rm -r "$local_programs"
run_setup "a folder must be a full path" 7 "$packaging_setup" /S '/D=somewhere'

# --- Two users: the second has a registry of his own, and the same machine

registry_delete_settings
take_state before
run_setup "the first user installs" 0 "$packaging_work/0.9.0-setup.exe" /S
take_state first
stop_wine_server
cp "$WINEPREFIX/user.reg" "$packaging_work/user.reg"
awk '/^\[Software\\\\(Classes\\\\.*|Microsoft\\\\Windows\\\\CurrentVersion\\\\Uninstall\\\\TovarEx)\]/ { skip = 1; next }
    /^\[/ { skip = 0 } !skip' "$packaging_work/user.reg" >"$WINEPREFIX/user.reg"
start_wine_server
check "the second user has no class" registry_lacks "HKCU\\$class_key"
run_setup "the second user installs" 0 "$packaging_work/0.9.0-setup.exe" /S '/D=C:\users\second\TovarEx'
check "the second user has a class" is "$(registry_value "HKCU\\$class_key")" 'C:\users\second\TovarEx\TovarEx.dll'
run_setup "the second user removes" 0 "$packaging_setup" /S /Uninstall
check "the second user's files go" gone "$drive/users/second"
stop_wine_server
cp "$packaging_work/user.reg" "$WINEPREFIX/user.reg"
start_wine_server
check "the first user's class is still there" \
    is "$(registry_value "HKCU\\$class_key")" "$own_windows_folder\\TovarEx.dll"
check "the first user's files are still there" cmp "$packaging_stage/TovarEx.dll" "$own_folder/TovarEx.dll"
run_setup "the first user removes, with the setting" 0 "$packaging_setup" /S /Uninstall /RemoveSettings
take_state after
count_same_state "nothing is left of two users' installations" before after

# --- What cannot be written

run_setup "a folder below a file cannot be made" 4 "$packaging_setup" /S '/D=C:\ask.vbs\TovarEx'
disk=$packaging_work/disk
mkdir -p "$disk"
if mount -t tmpfs -o size=4m none "$disk" 2>/dev/null; then # where this user may
    disk_folder=$(windows_path "$disk")\\TovarEx
    run_setup "installs on a small disk" 0 "$packaging_work/0.9.0-setup.exe" /S "/D=$disk_folder"
    folder_state "$disk" "$packaging_work/older"
    run_setup "an upgrade that finds the disk full ends in its exit code" 4 "$packaging_setup" /S
    folder_state "$disk" "$packaging_work/now"
    check "the older version stays on the full disk" same "$packaging_work/older" "$packaging_work/now"
    check "the older version stays registered there" is "$(registry_value "HKCU\\$class_key")" "$disk_folder\\TovarEx.dll"
    run_setup "removes from the full disk" 0 "$packaging_setup" /S /Uninstall
    check "the disk is empty again" is "$(ls "$disk")" ""
    umount "$disk"
fi

# --- With windows

# Answers every page with the return key until the program ends. $1: its process
answer_pages() {
    local try
    for try in $(seq 150); do
        kill -0 "$1" 2>/dev/null || break
        quiet xdotool key Return || true
        sleep 0.2
    done
    code=0
    wait "$1" || code=$?
}
# $1: a window's title
wait_for_window() {
    local try
    for try in $(seq 100); do
        quiet xdotool search --name "$1" && return 0
        sleep 0.1
    done
    return 1
}
timeout 100 wine "$packaging_setup" /NoShortcut </dev/null >"$packaging_work/program.log" 2>&1 &
pages=$!
check "setup shows a window" wait_for_window "^TovarEx Setup"
run_setup "a second setup is refused meanwhile" 9 "$packaging_work/0.9.0-setup.exe" /S
answer_pages "$pages"
check "setup ends well with what it proposes" is "$code" 0
check "setup has installed" cmp "$packaging_stage/TovarEx.dll" "$own_folder/TovarEx.dll"
check "without a shortcut where none is wanted" gone "$drive/users/$me/$start_menu"
set_setting HKCU
timeout 100 wine "$own_folder/uninstall.exe" "_?=$own_windows_folder" </dev/null >"$packaging_work/program.log" 2>&1 &
pages=$!
check "the uninstaller shows a window" wait_for_window "^TovarEx Uninstall"
answer_pages "$pages"
check "the uninstaller ends well with what it proposes" is "$code" 0
check "the uninstaller has removed" is "$(ls "$own_folder")" uninstall.exe
check "the uninstaller keeps the setting unless it is told" \
    is "$(registry_value 'HKCU\SOFTWARE\Vantrel\Config' ArchiverSetting)" 0x3ff
rm -r "$local_programs"

# --- The setting

set_setting HKCU
wine_registry 'HKCU\SOFTWARE\Vantrel\Config' /v Host /d host
set_setting HKLM
wine_registry 'HKCU\Software\TovarEx\Archivers\UnRar32' /v Processors /t REG_DWORD /d 1
run_setup "installs beside a setting" 0 "$packaging_work/0.9.0-setup.exe" /S '/D=C:\beside'
# The uninstaller run in place waits, and stays itself; then it finds nothing to do.
run_setup "the uninstaller removes the setting on request" 0 "$drive/beside/uninstall.exe" /S /RemoveSettings '_?=C:\beside'
check "it leaves nothing but itself" is "$(ls "$drive/beside")" uninstall.exe
run_setup "the uninstaller runs a second time without harm" 0 "$drive/beside/uninstall.exe" /S '_?=C:\beside'
rm -r "$drive/beside"
check "the setting goes" registry_lacks 'HKCU\SOFTWARE\Vantrel\Config' ArchiverSetting
check "the libraries' options go" registry_lacks 'HKCU\Software\TovarEx\Archivers\UnRar32' Processors
check "the host's value stays" is "$(registry_value 'HKCU\SOFTWARE\Vantrel\Config' Host)" host
check "the machine's setting goes" registry_lacks 'HKLM\SOFTWARE\Vantrel\Config' ArchiverSetting
run_windows reg query 'HKLM\SOFTWARE\Vantrel'
check "a host's key that is empty goes" is "$code" 1

# --- A component that is gone, and another copy of it

run_setup "installs once more" 0 "$packaging_work/0.9.0-setup.exe" /S
rm "$own_folder/TovarEx.dll"
run_setup "removes although the component is gone" 0 "$packaging_setup" /S /Uninstall
stop_wine_server
check "nothing is left of the registration" \
    is "$(grep -iE 'TovarEx\.|Uninstall.*TovarEx|f0f74181-faff|b5a51074-fb0a|4537e220-b11b' "$WINEPREFIX/user.reg" || true)" ""
start_wine_server
run_setup "installs, and another copy is registered" 0 "$packaging_work/0.9.0-setup.exe" /S
cp "$packaging_stage/TovarEx.dll" "$drive/TovarEx.dll"
run_windows regsvr32 /s /n /i:user 'C:\TovarEx.dll'
run_setup "removes while another copy is registered" 0 "$packaging_setup" /S /Uninstall
check "another copy stays registered" is "$(registry_value "HKCU\\$class_key")" 'C:\TovarEx.dll'
run_windows regsvr32 /s /n /u /i:user 'C:\TovarEx.dll'

# --- The ZIP, without installation

mkdir -p "$drive/plain 日本"
unzip -q "$packaging_zip" -d "$drive/plain 日本"
TOVAREX_BIN="$drive/plain 日本/TovarEx-$packaging_version" start_host "$root/samples/welcome.zip"
check "the unpacked ZIP works without registration" test "${report#the archive is shown}" != "$report"
stop_host
run_windows "$drive/plain 日本/TovarEx-$packaging_version/tovar.exe" test "$(windows_path "$root/samples/welcome.zip")"
check "the unpacked console host works" is "$code" 0

stop_wine_server
rm -rf "$WINEPREFIX" "$packaging_work"
export WINEPREFIX=$packaging_prefix_before WINEDLLOVERRIDES=$packaging_overrides_before
start_wine_server
