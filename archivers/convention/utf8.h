#pragma once
#include <cstddef>
#include <string_view>

/// UTF-8 by RFC 3629: overlong forms, surrogates and values above U+10FFFF are no characters.
namespace archiver {

inline constexpr char32_t kNoCharacter = 0xFFFD;  ///< stands for bytes that form no character

struct DecodedCharacter {
    char32_t value = kNoCharacter;
    std::size_t length = 1;  ///< bytes, at least 1
    bool valid = false;
};

/// Reads the first character of a text that is not empty.
DecodedCharacter decodeCharacter(std::string_view utf8) noexcept;

/// Whether every byte is a character of its own in UTF-8 and in every ANSI code page, and none is NUL.
bool isPlainAscii(std::string_view text) noexcept;

}  // namespace archiver
