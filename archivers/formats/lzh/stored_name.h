#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace archiver::lzh {

/// A member's name as a header holds it. What memberName makes of it is the name again.
struct StoredName {
    std::string folder;                   ///< 0xFF behind every part; empty for a member without folders
    std::string name;                     ///< empty for a folder
    std::u16string wideFolder, wideName;  ///< as well; empty where the bytes say it all. Separators are 0xFFFF
    std::uint32_t codePage = 0;           ///< of `folder` and `name`; 0 for the one that the format is used to
};

/// @param utf8  with "/" between its parts; a folder ends with one
/// @param ansi  names are written in the process's ANSI code page where it holds them exactly, as archivers for Windows
///              do. Else, and for all other names, they are UTF-8, and UTF-16 as well
StoredName storedNameOf(std::string_view utf8, bool ansi);

}  // namespace archiver::lzh
