#include "archivers/formats/lzh/stored_name.h"

#include <algorithm>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver::lzh {
namespace {

constexpr char kFolderSeparator = '\xFF';
constexpr char16_t kWideSeparator = 0xFFFF;
constexpr std::uint32_t kUtf8Page = 65001;

std::u16string wideOf(std::string_view utf8) {
    std::u16string wide;
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        utf8.remove_prefix(next.length);
        if (next.value == U'/') {
            wide += kWideSeparator;
        } else if (next.value < 0x10000) {
            wide += static_cast<char16_t>(next.value);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((next.value - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + (next.value & 0x3FF));
        }
    }
    return wide;
}

/// Where the code page is UTF-8 itself, or a character looks like a separator, the bytes need a mark.
bool appendAnsi(std::string_view utf8, std::string& bytes) {
    return appendLegacyBytes(utf8, LegacyPage::kAnsi, bytes) && bytes != utf8 &&
           bytes.find(kFolderSeparator) == std::string::npos;
}

bool takeAnsi(std::string_view folder, std::string_view name, StoredName& stored) {
    StoredName ansi;
    if (isAscii(name)) {
        ansi.name = name;
    } else if (!appendAnsi(name, ansi.name)) {
        return false;
    }
    while (!folder.empty()) {
        const std::string_view part = folder.substr(0, folder.find('/'));
        std::string bytes;
        if (isAscii(part)) {
            bytes = part;
        } else if (!appendAnsi(part, bytes)) {
            return false;
        }
        (ansi.folder += bytes) += kFolderSeparator;
        folder.remove_prefix(part.size() + 1);
    }
    stored = std::move(ansi);
    return true;
}

}  // namespace

StoredName storedNameOf(std::string_view utf8, bool ansi) {
    const std::size_t folderEnd = utf8.find_last_of('/') + 1;
    const std::string_view folder = utf8.substr(0, folderEnd);
    const std::string_view name = utf8.substr(folderEnd);
    StoredName stored;
    if ((ansi || isAscii(utf8)) && takeAnsi(folder, name, stored)) return stored;
    stored.folder = folder;
    std::replace(stored.folder.begin(), stored.folder.end(), '/', kFolderSeparator);
    stored.name = name;
    stored.wideFolder = wideOf(folder);
    stored.wideName = wideOf(name);
    stored.codePage = kUtf8Page;
    return stored;
}

}  // namespace archiver::lzh
