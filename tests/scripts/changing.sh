# Archives that files were dropped on, pasted into and deleted from are read by other programs. Sourced by the test
# script.

changing_work=$build/change-test
rm -rf "$changing_work"
mkdir -p "$changing_work/kept"

# The tests of the browser's changes leave copies of their archives.
TOVAREX_KEEP_CHANGED=$(windows_path "$changing_work/kept") wine \
    "${TOVAREX_BIN:-$build/win32-release/bin}/win32_create_tests.exe" \
    --gtest_filter='DropFiles.Of*Process:PasteFiles.OfAnotherProcess:ChangeArchive.IsEmpty*' \
    >"$build/logs/changing.log" 2>&1 </dev/null || true

# $1: the archive. Prints the paths of its files in order, as another program reads them.
names_by_peer() {
    case $1 in
        *.zip) LC_ALL=C.UTF-8 unzip -Z1 "$1" | grep -v '/$' ;;
        *.lzh)
            rm -rf "$changing_work/out"
            mkdir "$changing_work/out"
            (cd "$changing_work/out" && LC_ALL=C.UTF-8 lha xq "$1" && find . -type f | sed 's|^\./||')
            ;;
    esac 2>"$build/logs/changing-names.log" | LC_ALL=C sort
}

# $1: what is checked; $2: the archive; the members, a line each, come from the standard input
count_members() {
    names_by_peer "$changing_work/kept/$2" >"$changing_work/names"
    diff "$changing_work/names" - >"$build/logs/changing-$2.diff" 2>&1 || {
        cat "$build/logs/changing-$2.diff"
        count_check "$1" 1
        return
    }
    count_check "$1" 0
}

count_members 'unzip lists what was dropped on a zip' dropped.zip <<'END'
docs/again.txt
docs/empty.txt
docs/new, one.txt
docs/old notes/my file.txt
docs/sub/deep/two.txt
readme.txt
END
count_members 'unzip lists what was pasted into a zip' pasted.zip <<'END'
-second.txt
@w, ide.txt
ansi.txt
docs/again.txt
docs/empty.txt
docs/old notes/my file.txt
readme.txt
END
count_members 'unzip lists a zip that was empty before' renewed.zip <<'END'
again.txt
END
count_members 'lha unpacks what was dropped on an lzh' dropped.lzh <<'END'
-minus.txt
@at.txt
blank and, comma.txt
sub/deep/two.txt
subdir/subdir2/hello.txt
END
count_members 'lha unpacks what deleting left of an lzh' deleted.lzh <<'END'
subdir/subdir2/hello.txt
END
count_members 'lha unpacks an lzh that was empty before' renewed.lzh <<'END'
again.txt
END

rm -rf "$changing_work"
