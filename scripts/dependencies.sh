# Builds the third-party libraries for Windows from their Debian source packages. Sourced, not run.
# Each is built once and kept in build/deps; docs/dependencies.md says what each is for and under which licence.

deps=$build/deps

# Sets what the recipes below build for.
# $1: win32 or win64
dependencies_for() {
    deps_target=$1
    case $deps_target in
    win32) deps_host=i686-w64-mingw32 deps_toolchain=$root/cmake/mingw-i686.cmake ;;
    win64) deps_host=x86_64-w64-mingw32 deps_toolchain=$root/cmake/mingw-x86_64.cmake ;;
    esac
    deps_prefix=$deps/$deps_target
    deps_build=$deps/build/$deps_target
    deps_zlib=(-DZLIB_LIBRARY=/usr/$deps_host/lib/libz.a -DZLIB_INCLUDE_DIR=/usr/$deps_host/include)
}
dependencies_for win32

# Unpacks a Debian source package to build/deps/src/<name>.
fetch_source() {
    local name=$1
    [ -d "$deps/src/$name" ] && return 0
    mkdir -p "$deps/src/download-$name"
    (cd "$deps/src/download-$name" && stable_apt_get deb-src -qq --download-only source "$name" &&
        dpkg-source -x ./*.dsc ../unpacking-"$name" && rm -rf "../$name")
    mv "$deps/src/unpacking-$name" "$deps/src/$name"
    (cd "$deps/src/download-$name" && awk -v name="$name" '/^Version:/ { print name, $2; exit }' ./*.dsc) >>"$deps/versions"
}

cmake_dependency() {
    local name=$1 target=$2
    shift 2
    cmake -S "$deps/src/$name" -B "$deps_build/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$deps_toolchain" -DTOVAREX_DEPS="$deps_prefix" \
        -DCMAKE_INSTALL_PREFIX="$deps_prefix" -DCMAKE_POSITION_INDEPENDENT_CODE=ON -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$deps_build/$name" --target "$target"
}

build_libzip() {
    fetch_source libzip
    cmake_dependency libzip zip -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF \
        -DENABLE_OPENSSL=OFF -DENABLE_WINDOWS_CRYPTO=ON -DENABLE_BZIP2=ON -DENABLE_LZMA=OFF -DBUILD_TOOLS=OFF \
        -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF "${deps_zlib[@]}"
    cp "$deps_build/libzip/lib/libzip.a" "$deps_prefix/lib"
    cp "$deps/src/libzip/lib/zip.h" "$deps_build/libzip/zipconf.h" "$deps_prefix/include"
}

build_libarchive() {
    fetch_source libarchive
    # Its check for "Bcrypt.h" stumbles over file systems that tell upper from lower case.
    mkdir -p "$deps_build/case"
    echo '#include <bcrypt.h>' >"$deps_build/case/Bcrypt.h"
    # It would run a program to find out whether zlib's functions are stdcall, which they are not; CMake stumbles there.
    # Times of 64 bits, without which members from 2038 on would be from 1902; who passes times to and fro has to be
    # compiled likewise.
    cmake_dependency libarchive archive_static \
        -DCMAKE_C_FLAGS="-I$deps_build/case -D__MINGW_USE_VC2005_COMPAT" -DENABLE_TEST=OFF -DENABLE_TAR=OFF \
        -DENABLE_CPIO=OFF -DENABLE_CAT=OFF -DENABLE_OPENSSL=OFF -DENABLE_LIBXML2=OFF -DENABLE_EXPAT=OFF \
        -DENABLE_ICONV=OFF -DENABLE_LZ4=OFF -DENABLE_LZMA=OFF -DENABLE_ZSTD=OFF -DENABLE_LIBB2=OFF \
        -DENABLE_WERROR=OFF -DZLIB_WINAPI=OFF -DZLIB_WINAPI_WITH_LIB="/usr/$deps_host/lib/libz.a" \
        "${deps_zlib[@]}"
    cp "$deps_build/libarchive/libarchive/libarchive_static.a" "$deps_prefix/lib/libarchive.a"
    cp "$deps/src/libarchive/libarchive/archive.h" "$deps/src/libarchive/libarchive/archive_entry.h" "$deps_prefix/include"
}

# Makes a library of some C sources that need nothing but the C library, and so none of their project's own makefiles.
# $1: library; then flags; after "--" the sources
compile_library() {
    local library=$1 flags=() source objects
    shift
    while [ "$1" != -- ]; do
        flags+=("$1")
        shift
    done
    shift
    objects=$deps_build/$library
    rm -rf "$objects"
    mkdir -p "$objects" "$deps_prefix/lib" "$deps_prefix/include"
    for source in "$@"; do
        $deps_host-gcc-posix -O2 -fno-strict-aliasing "${flags[@]}" -c "$source" -o "$objects/$(basename "$source" .c).o"
    done
    rm -f "$deps_prefix/lib/$library.a"
    $deps_host-ar rcs "$deps_prefix/lib/$library.a" "$objects"/*.o
}

build_bzip2() {
    fetch_source bzip2
    local lib=$deps/src/bzip2 name sources=()
    for name in blocksort huffman crctable randtable compress decompress bzlib; do sources+=("$lib/$name.c"); done
    compile_library libbz2 -D_FILE_OFFSET_BITS=64 -- "${sources[@]}"
    cp "$lib/bzlib.h" "$deps_prefix/include"
}

# Only its decoders; the sources that they include are none of their own.
build_lhasa() {
    fetch_source lhasa
    local lib=$deps/src/lhasa/lib name sources=()
    for name in crc16 lha_decoder lha_endian null_decoder lh1_decoder lh5_decoder lh6_decoder lh7_decoder lhx_decoder \
        lz5_decoder lzs_decoder pm1_decoder pm2_decoder; do
        sources+=("$lib/$name.c")
    done
    compile_library liblhasa -I"$lib" -I"$lib/public" -- "${sources[@]}"
    mkdir -p "$deps_prefix/include/liblhasa-1.0"
    cp "$lib"/public/*.h "$deps_prefix/include/liblhasa-1.0"
}

# Only what reads cabinets.
build_libmspack() {
    fetch_source libmspack
    local lib=$deps/src/libmspack/mspack name sources=()
    for name in system cabd lzxd mszipd qtmd; do sources+=("$lib/$name.c"); done
    # Offsets of 64 bits; its users have to be compiled likewise.
    compile_library libmspack -I"$lib" -D_FILE_OFFSET_BITS=64 -DSIZEOF_OFF_T=8 -DHAVE_INTTYPES_H=1 -- "${sources[@]}"
    cp "$lib/mspack.h" "$deps_prefix/include"
}

# Only what works on bare deflate data, and its checksum. It finds out by itself what the processor can do.
build_libdeflate() {
    fetch_source libdeflate
    local lib=$deps/src/libdeflate/lib
    compile_library libdeflate -I"$deps/src/libdeflate" -- "$lib/utils.c" "$lib/deflate_compress.c" \
        "$lib/deflate_decompress.c" "$lib/crc32.c" "$lib/x86/cpu_features.c"
    cp "$deps/src/libdeflate/libdeflate.h" "$deps_prefix/include"
}

# The interface definitions that ours import; unpacked beside the build, as nothing of that package has to be installed.
build_idl() {
    local dir=$deps/idl-package
    mkdir -p "$dir"
    (cd "$dir" && { apt-get -qq download libwine-dev || stable_apt_get deb -qq download libwine-dev; } &&
        dpkg-deb -x libwine-dev_*.deb . && rm -rf "$deps/idl" && cp -r usr/include/wine/wine/windows "$deps/idl")
    rm -rf "$dir"
}

# Prepares one of them when it is missing, or was built by another recipe than today's: it leaves its recipe's checksum
# when it is complete.
# $1: its name; $2: the folder of its checksum
prepare_dependency() {
    local name=$1 stamp=$2/$1 recipe
    recipe=$(declare -f "build_$name" cmake_dependency compile_library | cksum)
    [ "$(cat "$stamp" 2>/dev/null)" = "$recipe" ] && return 0
    say "Preparing $name for $deps_target (once)"
    rm -rf "${deps_build:?}/$name"
    logged "dependency-$deps_target-$name" bash -euo pipefail -c \
        ". '$root/scripts/common.sh'; dependencies_for $deps_target; build_$name"
    mkdir -p "$2"
    echo "$recipe" >"$stamp"
}

# $1: what to build for: win32, which is also what nothing means, or win64
build_dependencies() {
    local name
    dependencies_for "${1:-win32}"
    prepare_dependency idl "$deps/done"
    for name in bzip2 libzip libarchive lhasa libmspack libdeflate; do
        prepare_dependency "$name" "$deps/done/$deps_target"
    done
}
