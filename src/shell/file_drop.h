#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/text_codec.h"

namespace tovar {

/// Names of files as the desktop's programs hand them to each other: a header of 20 bytes (offset of the list, drop
/// point x and y, flag for a point outside the client area, flag for wide names; 32 bits each, the low byte first),
/// then every full path with a NUL behind it, and one more NUL. Source: Windows SDK documentation, DROPFILES.
///
/// @param codec  the code page of the names. Where one of them has no form in it all are written wide, in UTF-16: a
///               list without that file would be another list.
[[nodiscard]] std::string buildFileDrop(const std::vector<std::wstring>& paths, const TextCodec& codec);

/// Reads such a block, whoever has written it; nothing behind its end is looked at.
/// @param block  may have anything behind the list
/// @param codec  the code page of names that are not wide
/// @return the paths, none for an empty list; nullopt for a block that is damaged: too short, with its list outside, or
///         with a last name that does not end
[[nodiscard]] std::optional<std::vector<std::wstring>> readFileDrop(std::string_view block, const TextCodec& codec);

}  // namespace tovar
