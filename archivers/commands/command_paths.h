#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace archiver {

/// The file that a word of a command line names.
/// @param utf8  a NUL ends it
[[nodiscard]] std::filesystem::path pathOf(std::string_view utf8);

/// The folder that a word names; the separator at its end may be "\" or "/", on every system.
[[nodiscard]] std::filesystem::path folderOf(std::string_view utf8);

/// The archive that a word names.
/// @param extension  such as ".zip"; added to a name without one, unless a file of the plain name is there. Empty: the
///                   language adds none
[[nodiscard]] std::filesystem::path archiveOf(std::string_view utf8, std::string_view extension);

/// Whether something that is no folder stands there.
[[nodiscard]] bool isFile(const std::filesystem::path& file) noexcept;

/// The path as a text for people: without the sign of a long path in Windows; what is no character becomes U+FFFD.
[[nodiscard]] std::string utf8Of(const std::filesystem::path& path);

}  // namespace archiver
