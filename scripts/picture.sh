# Pictures of the sample host. Sourced, not run.

# The path of a Linux file as a program under Wine knows it.
windows_path() {
    local path
    path=$(realpath "$1")
    printf 'Z:%s' "${path//\//\\}"
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

# Opens an archive in the sample host, takes the screen once it is shown, and closes the host.
# $1: the picture; $2: the archive
take_picture() {
    local line host
    mkdir -p "$(dirname "$1")"
    coproc host_program {
        exec timeout 120 wine "$build/win32-release/bin/SampleHost.exe" --report "$(windows_path "$2")" \
            2>"$build/logs/host.log"
    }
    host=$host_program_PID
    read -r -t 60 -u "${host_program[0]}" line || line=''
    line=${line%$'\r'}
    [ -n "$line" ] || fail "The sample host did not come up; see $build/logs/host.log"
    say "The sample host says: $line"
    settled_picture "$1"
    kill "$host" 2>/dev/null || true
    wait "$host" 2>/dev/null || true
}
