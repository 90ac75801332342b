#pragma once

/// The case of letters of all scripts, character by character, whatever locale the process has. Implemented in win32/
/// and posix/.
namespace archiver {

/// The form in which two characters that differ by their case alone are equal; one character becomes one.
char32_t foldCase(char32_t character) noexcept;

/// The small form of a letter; any other character stays; one character becomes one.
char32_t lowerCase(char32_t character) noexcept;

}  // namespace archiver
