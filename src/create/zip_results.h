#pragma once
#include <cstdint>
#include <string_view>

namespace tovar {

/// @return what a result code of the zip library means, for the user; empty for a code without a text: such a run has
///         failed all the same, and nothing is shown
[[nodiscard]] std::wstring_view zipResultText(std::int32_t code) noexcept;

}  // namespace tovar
