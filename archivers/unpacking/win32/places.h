#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace archiver {

/// What stands at a path.
enum class PlaceKind : std::uint8_t { kNothing, kFile, kFolder, kLink };

/// Looks at the path itself, not through it. A symbolic link, a junction, a mounted folder and whatever else leads to
/// another place is a link; a file or folder that the system only keeps in its own way (in a cloud, deduplicated) is
/// not.
PlaceKind kindOf(const std::wstring& path) noexcept;

/// By what the system tells of a path; `kFile` and `kFolder` for what is no link.
/// @param attributes  as GetFileAttributes gives them
PlaceKind kindOf(const std::wstring& path, unsigned long attributes) noexcept;

/// The absolute form without a limit of 260 characters and without names that the system would change: "\\?\C:\a",
/// "\\?\UNC\server\share\a". No separator at its end. @return empty when the system has no such path
std::wstring longPathOf(const std::filesystem::path& path);

/// Whether it is one part of a name, leads nowhere else and names no stream.
bool isPlainPart(std::wstring_view part) noexcept;

/// A name beside a file for what will take its place; no two are alike in this process.
std::wstring temporaryName();

/// Gives what stands at `from` the name `to`, in the same folder; a file or a link that stands there gives way in that
/// moment, also a write-protected one. @return whether it did; else GetLastError tells why, and both are as they were
bool renameOver(const std::wstring& from, const std::wstring& to) noexcept;

}  // namespace archiver
