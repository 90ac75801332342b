#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tovar {

/// Where a member can come to lie below the folder that it is unpacked to, likeliest first: some libraries leave
/// folders out although they are asked for them, and some write blanks as underscores.
/// @param member     path inside the archive
/// @param separator  between the folders of the results
/// @return relative paths; none for a name that could lead elsewhere
[[nodiscard]] std::vector<std::wstring> placesOf(std::wstring_view member, wchar_t separator);

}  // namespace tovar
