# What archives are made of. Sourced by the bench script.

# The files to pack, made once.
# $1: sources, small or large
input() {
    local folder=$data/input/$1
    if [ ! -e "$folder" ]; then
        say "Making the input \"$1\"" >&2
        rm -rf "$folder.part"
        mkdir -p "$folder.part"
        case $1 in
        sources) (cd "$deps/src" && find libarchive libzip lhasa libmspack bzip2 -type f -name '*.[ch1-9]' -print0 |
            xargs -0 cp --parents -t "$folder.part") ;;
        small) "$bin/make_files" small 100000 "$folder.part" ;;
        large) "$bin/make_files" large 1024 "$folder.part/large.txt" ;;
        esac
        mv "$folder.part" "$folder"
    fi
    printf %s "$folder"
}
