#include "archivers/commands/win32/wide_text.h"

#include "archivers/formats/utf8.h"

namespace archiver {

std::wstring wideOf(std::string_view utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        const char32_t character = next.valid ? next.value : kNoCharacter;
        if (character >= 0x10000) {
            wide += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        } else {
            wide += static_cast<wchar_t>(character);
        }
        utf8.remove_prefix(next.length);
    }
    return wide;
}

}  // namespace archiver
