# A Wine prefix of our own, and a display for it. Sourced, not run.
# TOVAREX_WINE_PREFIX names another folder for the prefix, TOVAREX_SCREEN another size of the virtual display.

case $windows in
win32) export WINEPREFIX=${TOVAREX_WINE_PREFIX:-$build/wine} ;;
win64) export WINEPREFIX=${TOVAREX_WINE_PREFIX:-$build/wine64} ;;
esac
export WINEARCH=$windows
export WINEDLLOVERRIDES="mscoree=;mshtml=" # none of ours is written for .NET or HTML: no prompts for their packages
export WINEDEBUG=${WINEDEBUG:--all}
screen_size=${TOVAREX_SCREEN:-1280x1024}
export LC_ALL=${TOVAREX_LOCALE:-C.UTF-8} # the locale gives the ANSI code page: 1252 here

quiet() { "$@" </dev/null >/dev/null 2>&1; }

# Without a display, starts a virtual one and stops it when the script ends.
ensure_display() {
    [ -n "${DISPLAY:-}" ] && return 0
    local number
    exec {display_fd}<> <(:)
    Xvfb -displayfd "$display_fd" -screen 0 "${screen_size}x24" -nolisten tcp </dev/null >"$build/logs/xvfb.log" 2>&1 &
    virtual_display_pid=$!
    read -r -t 20 -u "$display_fd" number || fail "The virtual display did not start; see $build/logs/xvfb.log"
    export DISPLAY=:$number
}

# Makes the prefix when there is none. A half-made one is never left behind under its name.
ensure_prefix() {
    [ -e "$WINEPREFIX/tovarex-ready" ] && return 0
    say "Making a Wine prefix (once)"
    mkdir -p "$build/logs"
    rm -rf "$WINEPREFIX"
    logged wineboot timeout 300 wine wineboot -i
    wine_registry 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0
    wine_registry 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "$screen_size"
    mkdir -p "$WINEPREFIX/drive_c/windows/Fonts"
    cp /usr/share/wine/fonts/*.ttf /usr/share/wine/fonts/*.fon "$WINEPREFIX/drive_c/windows/Fonts/"
    quiet wineserver -w
    touch "$WINEPREFIX/tovarex-ready"
}

# Goes over to a prefix that is a copy of the finished one.
# $1: what its name ends in
use_copied_prefix() {
    local original=$WINEPREFIX
    export WINEPREFIX=$original-$1
    [ -e "$WINEPREFIX/tovarex-ready" ] && return 0
    rm -rf "$WINEPREFIX"
    cp -a "$original" "$WINEPREFIX.part"
    mv "$WINEPREFIX.part" "$WINEPREFIX"
}

wine_registry() { quiet timeout 120 wine reg add "$@" /f; }

# One desktop window for all: closing a window takes no time there, and pictures hold everything.
# $1: yes or no
use_virtual_desktop() {
    [ "$(cat "$WINEPREFIX/tovarex-desktop" 2>/dev/null)" = "$1" ] && return 0
    if [ "$1" = yes ]; then
        wine_registry 'HKCU\Software\Wine\Explorer' /v Desktop /d Default
    else
        quiet timeout 120 wine reg delete 'HKCU\Software\Wine\Explorer' /v Desktop /f || true
    fi
    echo "$1" >"$WINEPREFIX/tovarex-desktop"
}

# Keeps one server for many programs: each then starts in hundredths of a second.
start_wine_server() {
    quiet wineserver -w || true # one that the preparations left behind has other habits
    quiet wineserver -p
    wine_server_started=yes
    quiet timeout 120 wine cmd /c exit
}

stop_wine() {
    if [ -n "${wine_server_started:-}" ]; then
        quiet wineserver -k || true
        quiet wineserver -w || true
    fi
    if [ -n "${virtual_display_pid:-}" ]; then
        kill "$virtual_display_pid" 2>/dev/null || true
        wait "$virtual_display_pid" 2>/dev/null || true
    fi
}

# Everything a program needs that runs under Wine; undone when the script ends.
# $1: whether to use a virtual desktop
start_wine() {
    mkdir -p "$build/logs"
    trap stop_wine EXIT
    ensure_display
    ensure_prefix
    use_virtual_desktop "$1"
    start_wine_server
}
