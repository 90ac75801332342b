#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tovar {

/// Texts as the registry keeps them: UTF-16LE with a NUL at the end.
[[nodiscard]] std::vector<std::uint8_t> toRegistryText(std::wstring_view text);

/// @param bytes  with the NUL or without; half a character at the end is left out
/// @return the text without the one NUL that ends it
[[nodiscard]] std::wstring fromRegistryText(std::span<const std::uint8_t> bytes);

}  // namespace tovar
