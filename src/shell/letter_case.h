#pragma once
#include <string>
#include <string_view>

namespace tovar {

// Case of all letters, each character by itself, by Unicode's simple mapping, whatever the user's language.

/// @return the text in lower case, for comparing texts whatever their case
[[nodiscard]] std::wstring foldCase(std::wstring_view text);

/// @return the text in upper case, for showing it
[[nodiscard]] std::wstring raiseCase(std::wstring_view text);

}  // namespace tovar
