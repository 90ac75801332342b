# Pictures of the sample host. Sourced, not run.

# The path of a Linux file as a program under Wine knows it.
windows_path() {
    local path
    path=$(realpath "$1")
    case $path in
    "$WINEPREFIX"/drive_c/*) path=C:${path#"$WINEPREFIX/drive_c"} ;;
    *) path=Z:$path ;;
    esac
    printf '%s' "${path//\//\\}"
}

# Takes the screen until two pictures in a row are the same: then everything is drawn.
# $1: the file
settled_picture() {
    local before='' now=none try
    for try in $(seq 60); do
        import -window root "$1"
        now=$(identify -format '%#' "$1")
        [ "$now" = "$before" ] && return 0
        before=$now
    done
    fail "The screen never came to rest"
}

# Gives the screen another scale; programs that start from now on are shown at it.
# $1: per cent; 100 is 96 dots per inch
set_scale() {
    wine_registry 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * $1 / 100))
    quiet wineserver -k
    start_wine_server
}

# Starts the sample host with an archive, waits for its report and sets $report. $host_pid is the running host's.
# $1: the archive or folder; $2 and more: options
start_host() {
    coproc host_program {
        exec timeout 300 wine "${TOVAREX_BIN:-$programs_folder}/SampleHost.exe" --report "${@:2}" \
            "$(windows_path "$1")" \
            2>"$build/logs/host.log"
    }
    host_pid=$host_program_PID
    report=''
    read -r -t 120 -u "${host_program[0]}" report || true
    report=${report%$'\r'}
    [ -n "$report" ] || fail "The sample host did not come up; see $build/logs/host.log"
}

stop_host() {
    kill "$host_pid" 2>/dev/null || true
    wait "$host_pid" 2>/dev/null || true
}

# Opens an archive in the sample host and closes it again; $report says what came up, and when.
open_and_report() {
    start_host "$1"
    stop_host
}

# Opens an archive in the sample host, takes the screen once it is shown, and closes the host.
# $1: the picture; $2: the archive
take_picture() {
    mkdir -p "$(dirname "$1")"
    start_host "$2"
    say "The sample host says: $report"
    settled_picture "$1"
    stop_host
    mogrify -trim +repage "$1" # the bare desktop around the windows says nothing
}

# Opens an archive in the sample host, takes the screen once the extraction dialog is shown, and closes the host.
# $1: the picture; $2: the archive
take_unpack_picture() {
    mkdir -p "$(dirname "$1")"
    start_host "$2" --extract
    say "The sample host says: $report"
    settled_picture "$1"
    stop_host
    mogrify -trim +repage "$1"
}

# Lets the sample host compress a folder, takes the screen once the pack dialog is shown, and closes the host. Of the
# libraries that create archives only one is there, so that its packer is chosen.
# $1: the picture; $2: the library; $3: the folder
take_pack_picture() {
    local bin=${TOVAREX_BIN:-$programs_folder} alone
    alone=$(mktemp -d)
    cp "$bin"/{SampleHost.exe,TovarEx.dll,TovarEx.manifest,"$2"} "$alone"
    mkdir -p "$(dirname "$1")"
    TOVAREX_BIN=$alone start_host "$3" --compress
    say "The sample host says: $report"
    settled_picture "$1"
    stop_host
    rm -rf "$alone"
    mogrify -trim +repage "$1"
}

# Lets the sample host configure the component, takes the screen once the dialog is shown, and closes the host.
# $1: the picture; $2: the folder; $3: the libraries that are there, divided by blanks; $4: anything unfolds the list
# of libraries
take_configuration_picture() {
    local bin=${TOVAREX_BIN:-$build/win32-release/bin} place library
    place=$(mktemp -d)
    cp "$bin"/{SampleHost.exe,TovarEx.dll,TovarEx.manifest} "$place"
    for library in $3; do
        cp "$bin/$library.dll" "$place"
    done
    mkdir -p "$(dirname "$1")"
    TOVAREX_BIN=$place start_host "$2" --configure ${4:+--details}
    say "The sample host says: $report"
    settled_picture "$1"
    stop_host
    rm -rf "$place"
    mogrify -trim +repage "$1"
}
