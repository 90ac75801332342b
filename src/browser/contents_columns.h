#pragma once
#include <string_view>
#include <vector>

#include "drivers/driver_description.h"

namespace tovar {

enum class ColumnKey { Name, Original, Packed, Ratio, FileType, Modified, Attr, Type, Crc };

enum class ColumnAlignment { Left, Right, Centre };

/// A column of the contents list. Its width is the width of the measuring text, in the list's font, times the factor.
struct ContentsColumn {
    ColumnKey key = ColumnKey::Name;
    std::wstring_view header;
    std::wstring_view measuringText;
    double factor = 1;
    ColumnAlignment alignment = ColumnAlignment::Left;
};

/// @return the columns that an archive kind shows, from left to right
[[nodiscard]] std::vector<ContentsColumn> contentsColumnsOf(const ContentsColumns& kind);

}  // namespace tovar
