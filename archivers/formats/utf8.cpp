#include "archivers/formats/utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace archiver {
namespace {

constexpr bool isHighSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Length of the character at the start of `bytes`; 0 when there is none.
std::size_t characterLength(std::string_view bytes) noexcept {
    const auto at = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned char first = at(0);
    if (first < 0x80) return 1;
    // The second byte's range depends on the first one; that rules out overlong forms, surrogates and large values.
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        if (first == 0xE0) low = 0xA0;
        if (first == 0xED) high = 0x9F;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        if (first == 0xF0) low = 0x90;
        if (first == 0xF4) high = 0x8F;
    }
    if (length == 0 || bytes.size() < length || at(1) < low || at(1) > high) return 0;
    for (std::size_t index = 2; index < length; ++index) {
        if (at(index) < 0x80 || at(index) > 0xBF) return 0;
    }
    return length;
}

}  // namespace

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

bool isUtf8(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

void appendUtf8(char32_t character, std::string& utf8) {
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) character = 0xFFFD;
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
