# Installs the Debian packages this project is built and tested with. Sourced, not run.
#
# Wine's 32-bit half comes from the foreign architecture i386, whose package index can lag behind the native one for
# some hours; apt then refuses the whole installation. The second try therefore asks only the stable suites (without
# the security suite, which is the one that moves), through a package list of its own, so that both halves match.

# shellcheck disable=SC2034
build_packages=(
    g++ cmake ninja-build pkg-config dpkg-dev
    libarchive-dev libzip-dev libdeflate-dev liblhasa-dev libmspack-dev zlib1g-dev libbz2-dev googletest
    g++-mingw-w64-i686-posix mingw-w64-tools libz-mingw-w64-dev
)
bench_packages=(cabextract lhasa)
package_packages=(nsis zip unzip)
run_packages=(wine wine32:i386 fonts-wine xvfb imagemagick)
win64_packages=(g++-mingw-w64-x86-64-posix wine64) # for ./test --64 alone
test_packages=(locales xdotool zip unzip 7zip ncompress bzip2 libarchive-tools arj gcab jlha-utils)

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

package_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Prints the machine's own package sources as one-line entries, without the security suite.
# $1: deb or deb-src
stable_sources() {
    local codename keyring=/usr/share/keyrings/debian-archive-keyring.gpg options=
    codename=$(. /etc/os-release && printf %s "$VERSION_CODENAME")
    [ -e "$keyring" ] && options="[signed-by=$keyring]"
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk -v type="$1" -v codename="$codename" -v options="$options" '
            ($2 == codename || $2 == codename "-updates") && !seen[$0]++ { print type, options, $1, $2, $3 }'
}

# apt-get on the stable suites alone; the machine's own lists and preferences stay as they are. A package that the
# security suite has already moved ahead may step back here, because both halves of Wine need one version of it.
# $1: deb or deb-src; the rest: apt-get's arguments
stable_apt_get() {
    local type=$1 dir
    shift
    dir=${TOVAREX_APT_DIR:?}/$type
    mkdir -p "$dir/lists/partial"
    stable_sources "$type" >"$dir/sources.list"
    printf 'Package: *\nPin: release o=Debian\nPin-Priority: 1001\n' >"$dir/preferences"
    local options=(-o "Dir::Etc::sourcelist=$dir/sources.list" -o Dir::Etc::sourceparts=/dev/null
        -o "Dir::Etc::preferences=$dir/preferences" -o "Dir::State::Lists=$dir/lists" -o APT::Sandbox::User=root)
    if [ ! -e "$dir/updated" ]; then
        as_root apt-get "${options[@]}" -qq update && touch "$dir/updated"
    fi
    as_root apt-get "${options[@]}" "$@"
}

# Ends where the packages go by other names, or there is nothing that installs them. $1 and more: what is missing
require_debian() {
    local name
    name=$(. "${TOVAREX_OS_RELEASE:-/etc/os-release}" 2>/dev/null && printf '%s %s' "${ID:-}" "${VERSION_ID:-}") || true
    [ "$name" = 'debian 12' ] && command -v apt-get >/dev/null && return 0
    fail "This is built on Debian 12, and here is ${name:-another system}. In a container of it, such as debian:12, all comes by itself; here is missing: $*"
}

# Installs what is missing of the given packages; says nothing and is done at once when nothing is.
install_packages() {
    local missing=() package
    for package in "$@"; do
        package_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    require_debian "${missing[@]}"
    say "Installing ${missing[*]}"
    if [[ " ${missing[*]} " == *:i386* ]] && ! dpkg --print-foreign-architectures | grep -qx i386; then
        as_root dpkg --add-architecture i386
    fi
    export DEBIAN_FRONTEND=noninteractive
    local log=$TOVAREX_APT_DIR/install.log
    mkdir -p "$TOVAREX_APT_DIR"
    as_root apt-get -qq update >"$log" 2>&1 || say "The package index could not be read in full; going on with what is there"
    if as_root apt-get -y -q --no-install-recommends install "${missing[@]}" >>"$log" 2>&1; then return 0; fi
    say "The index of the two architectures is out of step; trying the stable suites alone"
    rm -rf "$TOVAREX_APT_DIR/deb"
    if stable_apt_get deb -y -q --no-install-recommends --allow-downgrades install "${missing[@]}" >>"$log" 2>&1; then
        return 0
    fi
    tail -n 30 "$log" >&2
    fail "The packages above could not be installed; apt's own words are in $log"
}
