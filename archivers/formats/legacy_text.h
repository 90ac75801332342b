#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace archiver {

/// Code pages of texts that do not say how they are encoded.
enum class LegacyPage : std::uint8_t {
    kOem,   ///< of the MS-DOS side: the system's OEM code page; 437 where there is none
    kAnsi,  ///< of the Windows side: the process's ANSI code page; 1252 where there is none
};

/// Appends the UTF-8 form of a text in a legacy code page. Control characters stay as they are; what is no character in
/// the code page becomes its default character. The result is always valid UTF-8. Implemented in win32/ and posix/.
/// A system whose code page is UTF-8 itself reads texts that are none with 437 and 1252, so that no two names fall
/// together.
void appendLegacyText(std::string_view bytes, LegacyPage page, std::string& utf8);

/// Appends the bytes of a UTF-8 text in a legacy code page: the way back.
/// @return false, and nothing is appended, when a character has no exact form there or the text is no UTF-8
bool appendLegacyBytes(std::string_view utf8, LegacyPage page, std::string& bytes);

}  // namespace archiver
