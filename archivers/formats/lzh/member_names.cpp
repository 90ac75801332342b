#include "archivers/formats/lzh/member_names.h"

#include <algorithm>
#include <string_view>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver::lzh {
namespace {

constexpr char kFolderSeparator = '\xFF';
constexpr char16_t kWideSeparator = 0xFFFF;

bool isSeparator(char character) noexcept { return character == '/' || character == '\\'; }

bool isOfDosFamily(std::uint8_t system) noexcept {
    return system == 'M' || system == 'w' || system == 'W' || system == '2';
}

void appendText(const Header& header, std::string_view bytes, std::string& utf8) {
    constexpr std::uint32_t kUtf8Page = 65001;
    const bool mayBeUtf8 = header.codePage == kUtf8Page || (header.codePage == 0 && !isOfDosFamily(header.system));
    if (isAscii(bytes) || (mayBeUtf8 && isUtf8(bytes)))
        utf8.append(bytes);
    else
        appendLegacyText(bytes, LegacyPage::kAnsi, utf8);
}

void appendWide(std::u16string_view text, std::string& utf8) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t character = text[at];
        if (character == kWideSeparator) {
            utf8 += '/';
            continue;
        }
        const bool leads = character >= 0xD800 && character < 0xDC00 && at + 1 < text.size();
        if (leads && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000) {
            character = 0x10000 + ((character - 0xD800) << 10) + (text[++at] - 0xDC00U);
        }
        appendUtf8(character, utf8);
    }
}

template <class Text>
Text upToNul(Text text) noexcept {
    return text.substr(0, text.find(typename Text::value_type{}));
}

void appendFolder(const Header& header, std::string& utf8) {
    if (!header.wideFolder.empty()) {
        appendWide(upToNul(std::u16string_view(header.wideFolder)), utf8);
    } else {
        std::string_view rest = upToNul(std::string_view(header.folder));
        for (;;) {
            const std::size_t end = rest.find(kFolderSeparator);
            appendText(header, rest.substr(0, end), utf8);
            if (end == std::string_view::npos) break;
            utf8 += '/';
            rest.remove_prefix(end + 1);
        }
    }
    // The archiver of the Amiga leaves the last separator out.
    if (!utf8.empty() && !isSeparator(utf8.back())) utf8 += '/';
}

}  // namespace

std::string memberName(const Header& header, std::string& linkTarget) {
    std::string name;
    appendFolder(header, name);
    if (!header.wideName.empty())
        appendWide(upToNul(std::u16string_view(header.wideName)), name);
    else
        appendText(header, upToNul(std::string_view(header.name)), name);

    linkTarget.clear();
    if (const std::size_t bar = header.isLink() ? name.find('|') : std::string::npos; bar != std::string::npos) {
        // "name|target", which some archivers spread over folder and name.
        linkTarget = name.substr(bar + 1);
        name.resize(bar);
    }
    // Nothing but a NUL, or a link without a name.
    if (name.empty()) name += '_';
    if (header.isFolderOrLink() && !header.isLink() && !isSeparator(name.back())) {
        const bool backslashes = name.find('/') == std::string::npos && name.find('\\') != std::string::npos;
        name += backslashes ? '\\' : '/';
    }
    return name;
}

}  // namespace archiver::lzh
