#include "archivers/formats/utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace archiver {
namespace {

constexpr bool isHighSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

DecodedCharacter decodeCharacter(std::string_view utf8) noexcept {
    const auto byteAt = [utf8](std::size_t index) { return static_cast<unsigned char>(utf8[index]); };
    const unsigned char lead = byteAt(0);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    // The lowest value of each length: what is below has a shorter form.
    std::size_t length = 0;
    char32_t value = 0;
    char32_t lowest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, value = lead & 0x1F, lowest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, value = lead & 0x0F, lowest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, value = lead & 0x07, lowest = 0x10000;
    } else {
        return {};
    }
    for (std::size_t index = 1; index < length; ++index) {
        if (index == utf8.size() || (byteAt(index) & 0xC0) != 0x80) {
            return {kNoCharacter, index, false};
        }
        value = (value << 6) | (byteAt(index) & 0x3F);
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < lowest || surrogate || value > 0x10FFFF) {
        return {};
    }
    return {value, length, true};
}

bool isAscii(std::string_view bytes) noexcept {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= sizeof(std::uint64_t); at += sizeof(std::uint64_t), left -= sizeof(std::uint64_t)) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, at, sizeof(eight));
        if ((eight & kHighBits) != 0) return false;
    }
    unsigned char rest = 0;
    for (; left > 0; ++at, --left) rest |= static_cast<unsigned char>(*at);
    return rest < 0x80;
}

bool isPlainAscii(std::string_view text) noexcept { return isAscii(text) && text.find('\0') == text.npos; }

bool isUtf8(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const DecodedCharacter next = decodeCharacter(bytes);
        if (!next.valid) return false;
        bytes.remove_prefix(next.length);
    }
    return true;
}

void appendUtf8(char32_t character, std::string& utf8) {
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) character = kNoCharacter;
    const auto continuation = [&](int shift) { return static_cast<char>(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        utf8 += static_cast<char>(character);
    } else if (character < 0x800) {
        utf8 += {static_cast<char>(0xC0 | character >> 6), continuation(0)};
    } else if (character < 0x10000) {
        utf8 += {static_cast<char>(0xE0 | character >> 12), continuation(6), continuation(0)};
    } else {
        utf8 += {static_cast<char>(0xF0 | character >> 18), continuation(12), continuation(6), continuation(0)};
    }
}

void appendUtf8(std::wstring_view text, std::string& utf8) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        auto character = static_cast<char32_t>(text[index]);
        if (isHighSurrogate(character) && index + 1 < text.size()) {
            const auto next = static_cast<char32_t>(text[index + 1]);
            if (isLowSurrogate(next)) {
                character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
                ++index;
            }
        }
        appendUtf8(character, utf8);
    }
}

}  // namespace archiver
