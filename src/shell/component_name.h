#pragma once
#include <string_view>

namespace tovar {
/// What the component calls itself: title of message boxes without a subject of their own, first part of error sources.
inline constexpr std::wstring_view kComponentName = L"TovarEx";
}  // namespace tovar
