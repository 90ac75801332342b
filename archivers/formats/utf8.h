#pragma once
#include <cstddef>
#include <string>
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

/// Whether all bytes are below 0x80.
bool isAscii(std::string_view bytes) noexcept;

/// Whether every byte is a character of its own in UTF-8 and in every ANSI code page, and none is NUL.
bool isPlainAscii(std::string_view text) noexcept;

/// Whether the bytes are characters throughout.
bool isUtf8(std::string_view bytes) noexcept;

/// Appends one character; a value that is none (a surrogate, above U+10FFFF) becomes U+FFFD.
void appendUtf8(char32_t character, std::string& utf8);

/// Appends a wide text: UTF-16 where wchar_t has 16 bits, UTF-32 where it has 32. Lone surrogates become U+FFFD.
void appendUtf8(std::wstring_view text, std::string& utf8);

}  // namespace archiver
