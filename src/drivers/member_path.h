#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace tovar {

/// Where a member goes below the folder that it is unpacked to, for drivers that name each member's file themselves. A
/// name that could mean a place outside, or anything but a plain file, has none: ".." and "." parts, a root, drives and
/// streams (":"), the characters that file names cannot have, parts that end with a dot or a blank, device names with
/// or without an extension, parts above 255 characters.
/// @param storedName   "/" or "\" between folders, none at the end
/// @param keepFolders  false: the last part alone, which alone is looked at
/// @param separator    what stands between the parts of the result
[[nodiscard]] std::optional<std::wstring> safeMemberPath(std::wstring_view storedName, bool keepFolders,
                                                         wchar_t separator);

}  // namespace tovar
