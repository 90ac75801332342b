# Unpacking to a memory disk: sources, 100,000 files of 1 KiB (40,000 in a cabinet), and one member of 1 GiB, in every
# kind that a free program writes. Sourced by the bench script.

target=$(mktemp -d "${TOVAREX_MEMORY_DISK:-/dev/shm}/tovarex-bench.XXXXXX")
trap 'rm -rf "$target"' EXIT

# An archive of an input, made once by another program.
# $1: input; $2: extension
packed() {
    local folder archive=$data/$1.$2 part=$data/part.$2
    folder=$(input "$1")
    if [ ! -e "$archive" ]; then
        say "Packing $1.$2" >&2
        rm -f "$part"
        (
            cd "$folder"
            case $2 in
            zip) zip -q -r "$part" . ;;
            tar) tar -cf "$part" ./* ;;
            tgz) tar -cf - ./* | gzip -c >"$part" ;;
            tar.bz2) tar -cf - ./* | bzip2 -c >"$part" ;;
            arj) arj a -r -y "$part" >/dev/null ;;
            lzh) jlha aq "$part" ./* >/dev/null ;;
            # A cabinet holds 65,535 members at most, and a command line 2 MiB.
            cab) find . -type f | sed 's,^\./,,' | sort | head -n 40000 | xargs -x -s 2000000 -d '\n' gcab -c -z "$part" ;;
            esac
        )
        mv "$part" "$archive"
    fi
    printf %s "$archive"
}

# $1: archive; the rest: peers
unpack_beside() {
    local archive=$1 contenders=() peer
    shift
    contenders=("tovar extract" "$bin/tovar extract --to $target/out $archive")
    for peer in "$@"; do
        case $peer in
        7zz) contenders+=("7zz x" "7zz x -y -bd -o$target/out $archive") ;;
        bsdtar) contenders+=("bsdtar -x" "bsdtar -xf $archive") ;;
        unzip) contenders+=("unzip" "unzip -q -o $archive") ;;
        tar) contenders+=("tar -x" "tar -xf $archive") ;;
        arj) contenders+=("arj x" "arj x -y $archive") ;;
        lha) contenders+=("lha x" "lha xqf $archive") ;;
        cabextract) contenders+=("cabextract" "cabextract -q $archive") ;;
        esac
    done
    printf '   %s, %s MiB\n' "$(basename "$archive")" "$(($(stat -c %s "$archive") >> 20))"
    "$bin/measure" --empty "$target/out" "$runs" "${contenders[@]}"
}

# bsdtar for Windows, built from the sources that the bundled libraries stand on.
windows_peer() {
    local peer=$deps_build/bsdtar/bin/bsdtar.exe
    if [ ! -e "$peer" ]; then
        say "Building bsdtar for Windows" >&2
        ln -sf "/usr/$deps_host/lib/libbcrypt.a" "$deps_build/case/libBcrypt.a"
        logged bsdtar cmake -S "$deps/src/libarchive" -B "$deps_build/bsdtar" -G Ninja -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_TOOLCHAIN_FILE="$deps_toolchain" -DTOVAREX_DEPS="$deps_prefix" \
            -DBUILD_SHARED_LIBS=OFF -DCMAKE_EXE_LINKER_FLAGS="-static -L$deps_build/case" \
            -DCMAKE_C_FLAGS="-I$deps_build/case -D__MINGW_USE_VC2005_COMPAT -DLIBARCHIVE_STATIC" \
            -DENABLE_TEST=OFF -DENABLE_CPIO=OFF -DENABLE_CAT=OFF -DENABLE_OPENSSL=OFF -DENABLE_LIBXML2=OFF \
            -DENABLE_EXPAT=OFF -DENABLE_ICONV=OFF -DENABLE_LZ4=OFF -DENABLE_LZMA=OFF -DENABLE_ZSTD=OFF \
            -DENABLE_LIBB2=OFF -DENABLE_WERROR=OFF "${deps_zlib[@]}"
        logged bsdtar cmake --build "$deps_build/bsdtar" --target bsdtar
    fi
    printf %s "$peer"
}

# $1: archive
unpack_under_wine() {
    local archive
    archive=$(windows_path "$1")
    printf '   %s\n' "$(basename "$1")"
    "$bin/measure" --empty "$target/out" "$runs" \
        "tovar.exe extract" "wine $build/win32-release/bin/tovar.exe extract --to $(windows_path "$target/out") $archive" \
        "bsdtar.exe -x" "wine $peer -xf $archive"
}

say "Unpacking to a memory disk, beside peers"
for what in sources small large; do
    unpack_beside "$(packed $what zip)" 7zz bsdtar unzip
    unpack_beside "$(packed $what tar)" 7zz bsdtar tar
    unpack_beside "$(packed $what tgz)" bsdtar tar
    unpack_beside "$(packed $what tar.bz2)" bsdtar tar
    unpack_beside "$(packed $what arj)" 7zz arj
    unpack_beside "$(packed $what lzh)" 7zz bsdtar lha
    unpack_beside "$(packed $what cab)" 7zz bsdtar cabextract
done

say "The same under Wine, beside bsdtar for Windows"
peer=$(windows_peer)
[ -n "${wine_server_started:-}" ] || start_wine yes
trap 'stop_wine; rm -rf "$target"' EXIT
for what in sources large; do
    for kind in zip tar tgz lzh cab; do unpack_under_wine "$(packed $what $kind)"; done
done
