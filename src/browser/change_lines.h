#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tovar {

// How archives are changed: what their libraries are told. Member lists are those of memberListOf.

/// The zip engine's commands.
inline constexpr std::wstring_view kZipDelete = L"d";
inline constexpr std::wstring_view kZipAdd = L"a -s -r -l6";

/// The members for the zip engine: files first, then what lies in folders, CR LF behind each. The names stand by
/// themselves in the engine's list, so that they have no quotes.
[[nodiscard]] std::wstring zipDeletionList(std::wstring_view memberList);

/// The line that deletes the members of a response file from an LZH archive.
/// @param list        "@" and the response file
/// @param wholePaths  names without folders mean members of the root alone; else those of every folder
[[nodiscard]] std::wstring lhaDeletionLine(std::wstring_view archive, std::wstring_view list, bool wholePaths);

/// The line that adds the items of a response file, which are relative to the current folder, to an LZH archive.
[[nodiscard]] std::wstring lhaAdditionLine(std::wstring_view archive, std::wstring_view list);

/// @param names  relative to one folder
/// @return a name a line, CR LF between them, as the zip engine and list files take them
[[nodiscard]] std::wstring linesOf(const std::vector<std::wstring>& names);

}  // namespace tovar
