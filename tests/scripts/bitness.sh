# Windows code that only 32 bits can do. It is compiled for 32 bits alone unless 64 are asked for, so that what a 64-bit
# compiler would refuse is looked for here: pointers cast to numbers of 32 bits, and window words that hold pointers
# read or written as such numbers. Sourced by ./test.

# Prints such lines of the given files.
lines_for_32_bits() {
    local number='(u?int|unsigned( int)?|u?long|unsigned long|U?INT|U?LONG|DWORD|ULONG32|(std::)?u?int32_t)'
    local pointers='(WNDPROC|USERDATA|HINSTANCE|HWNDPARENT|USER|DLGPROC|MSGRESULT|HICON|HICONSM|HCURSOR|HBRBACKGROUND)'
    local words='\b(Get|Set)(Window|Class)Long[AW]?\([^;]*(GWL|GCL|DWL)P?_'
    grep -nE "reinterpret_cast<$number>\(|$words$pointers\b" "$@"
}

bitness_check() {
    local files sample found
    # It finds what it is for, and leaves alone what is right.
    sample=$(printf '%s\n' 'auto a = reinterpret_cast<LONG>(window);' 'b = reinterpret_cast<std::uint32_t>(text);' \
        '::SetWindowLongW(w, GWLP_USERDATA, 0);' 'GetClassLong(w, GCL_HICON)' 'reinterpret_cast<LONG_PTR>(window);' \
        '::SetWindowLongPtrW(w, GWLP_USERDATA, 0);' '::SetWindowLongW(w, GWL_STYLE, style);' \
        'reinterpret_cast<std::uint32_t*>(bytes)' | lines_for_32_bits - | wc -l)
    [ "$sample" = 4 ] || return 1
    # One test calls with the stack of 32-bit Windows in hand, and is built for that alone.
    mapfile -t files < <(cd "$root" && git ls-files 'src/*.cpp' 'src/*.h' 'archivers/*.cpp' 'archivers/*.h' \
        'host/*.cpp' 'host/*.h' 'tests/*.cpp' 'tests/*.h' ':!tests/win32/infozip32')
    found=$(cd "$root" && lines_for_32_bits "${files[@]}") || true
    [ -z "$found" ] || { printf '%s\n' "$found" && return 1; }
}
code=0
bitness_check || code=$?
count_check "no code is for 32 bits alone" "$code"
