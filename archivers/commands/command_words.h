#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace archiver {

/// One word of a command line.
struct CommandWord {
    std::string text;        ///< UTF-8, without its quotes
    bool quoted = false;     ///< a quote stood somewhere in it
    std::size_t offset = 0;  ///< of its first byte in the line, quotes counted
};

/// The words of a line or a response file: blanks, tabs, line ends and NULs part them, double quotes group and are
/// removed; there is no escape, so a "\" before a quote stays one. A quote that is not closed reaches to the end, but
/// never beyond a NUL.
std::vector<CommandWord> commandWords(std::string_view line);

/// What stands in the line from an offset on, without blanks, tabs and line ends around it.
std::string_view restOfLine(std::string_view line, std::size_t offset) noexcept;

/// Whether a word that stands where a target folder may stand is one: it ends in "\", "/" or ":".
[[nodiscard]] bool isFolderWord(std::string_view word) noexcept;

}  // namespace archiver
