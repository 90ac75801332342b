#include "archivers/formats/letter_case.h"

#include <windows.h>

namespace archiver {
namespace {

char32_t mapped(char32_t character, DWORD mapping) noexcept {
    if (character >= 0x10000) return character;  // the system has no case for these one by one
    const auto unit = static_cast<wchar_t>(character);
    wchar_t other = unit;
    return ::LCMapStringW(LOCALE_INVARIANT, mapping, &unit, 1, &other, 1) == 1 ? other : unit;
}

}  // namespace

char32_t foldCase(char32_t character) noexcept {
    if (character < 0x80) {
        return character >= U'a' && character <= U'z' ? character - (U'a' - U'A') : character;
    }
    return mapped(character, LCMAP_UPPERCASE);
}

char32_t lowerCase(char32_t character) noexcept {
    if (character < 0x80) {
        return character >= U'A' && character <= U'Z' ? character + (U'a' - U'A') : character;
    }
    return mapped(character, LCMAP_LOWERCASE);
}

}  // namespace archiver
