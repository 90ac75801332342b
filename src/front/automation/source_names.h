#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tovar {

/// What is to be packed, named from a base folder.
struct SourceNames {
    std::vector<std::wstring> names;  ///< "*.*" for the folder itself
    std::wstring about;               ///< the name for which nothing is packed
    std::wstring problem;             ///< why; empty when all is well
    bool missing = false;             ///< the reason is a name that no file has
};

/// Names the sources of an archive from a folder: what lies elsewhere is refused, as its members' names would lead out
/// of the folder that they are unpacked to. A name that no file has is refused unless it is a pattern, before anything
/// is done: an archive that lacks a file is worse than none.
/// @param folder  absolute
[[nodiscard]] SourceNames nameSources(const std::vector<std::wstring>& names, const std::filesystem::path& folder);

/// The names as the zip engine takes them: one a line, CR LF between the lines.
[[nodiscard]] std::wstring zipRows(const std::vector<std::wstring>& names);

/// The same as rows of the list files of the other libraries, in quotes where they need them.
[[nodiscard]] std::wstring listRows(const std::vector<std::wstring>& names);

/// Members that are deleted from a ZIP archive, likewise: a folder with a separator at its end means all that lies in
/// it.
[[nodiscard]] std::wstring zipMemberRows(const std::vector<std::wstring>& members);

}  // namespace tovar
