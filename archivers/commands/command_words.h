#pragma once
#include <cstddef>
#include <filesystem>
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

/// The file that a word names, under any system's name for it.
/// @param utf8  a NUL ends it
[[nodiscard]] std::filesystem::path pathOf(std::string_view utf8);

/// The folder that a word names; its separator at the end may be either one, on every system.
[[nodiscard]] std::filesystem::path folderOf(std::string_view utf8);

/// The archive that a word names.
/// @param extension  such as ".zip"; added to a name without one, unless a file of the plain name is there. Empty: the
///                   language adds none
[[nodiscard]] std::filesystem::path archiveOf(std::string_view utf8, std::string_view extension);

/// Whether something that is no folder stands there.
[[nodiscard]] bool isFile(const std::filesystem::path& file) noexcept;

}  // namespace archiver
