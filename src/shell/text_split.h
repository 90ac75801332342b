#pragma once
#include <string_view>
#include <vector>

namespace tovar {

/// Cuts a text at every separator: "a,,b" has three items, ",": two empty ones. An empty text has none.
/// @param separator  one or more characters
/// @return views into the text
[[nodiscard]] std::vector<std::wstring_view> splitText(std::wstring_view text, std::wstring_view separator);

}  // namespace tovar
