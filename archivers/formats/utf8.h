#pragma once
#include <string>
#include <string_view>

namespace archiver {

/// Whether all bytes are below 0x80.
bool isAscii(std::string_view bytes) noexcept;

/// Whether the bytes are UTF-8 by RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view bytes) noexcept;

/// Appends one character; a value that is none (a surrogate, above U+10FFFF) becomes U+FFFD.
void appendUtf8(char32_t character, std::string& utf8);

/// Appends a wide text: UTF-16 where wchar_t has 16 bits, UTF-32 where it has 32. Lone surrogates become U+FFFD.
void appendUtf8(std::wstring_view text, std::string& utf8);

}  // namespace archiver
