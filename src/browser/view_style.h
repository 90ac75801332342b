#pragma once

namespace tovar {

/// How the contents list shows its rows. ExactDetails is Details with whole numbers, times and checksums in the cells.
enum class ViewStyle { LargeIcons, SmallIcons, List, Details, ExactDetails };

/// @return whether the style has columns
[[nodiscard]] constexpr bool hasColumns(ViewStyle style) noexcept {
    return style == ViewStyle::Details || style == ViewStyle::ExactDetails;
}

}  // namespace tovar
