#include "browser/contents_columns.h"

#include <algorithm>

namespace tovar {
namespace {

// "Packed" is measured on its header with one more blank.
constexpr ContentsColumn kAllColumns[] = {
    {ColumnKey::Name, L"Name", L"Name", 4, ColumnAlignment::Left},
    {ColumnKey::Original, L"Original (Bytes)", L"Original (Bytes)", 1.4, ColumnAlignment::Right},
    {ColumnKey::Packed, L"Packed (Bytes)", L"Packed  (Bytes)", 1.2, ColumnAlignment::Right},
    {ColumnKey::Ratio, L"Ratio", L"Ratio", 2.2, ColumnAlignment::Right},
    {ColumnKey::FileType, L"File Type", L"File Type", 2.6, ColumnAlignment::Left},
    {ColumnKey::Modified, L"Modified", L"Modified", 2.8, ColumnAlignment::Centre},
    {ColumnKey::Attr, L"Attr", L"Attr", 2.3, ColumnAlignment::Left},
    {ColumnKey::Type, L"Type", L"Type", 2.1, ColumnAlignment::Left},
    {ColumnKey::Crc, L"CRC", L"CRC", 2.3, ColumnAlignment::Left},
};

bool isShown(ColumnKey key, const ContentsColumns& kind) {
    switch (key) {
        case ColumnKey::Packed:
            return kind.packed;
        case ColumnKey::Ratio:
            return kind.ratio;
        case ColumnKey::Attr:
            return kind.attributes;
        case ColumnKey::Type:
            return kind.type;
        case ColumnKey::Crc:
            return kind.crc;
        default:
            return true;
    }
}

}  // namespace

std::vector<ContentsColumn> contentsColumnsOf(const ContentsColumns& kind) {
    std::vector<ContentsColumn> columns;
    std::copy_if(std::begin(kAllColumns), std::end(kAllColumns), std::back_inserter(columns),
                 [&](const ContentsColumn& column) { return isShown(column.key, kind); });
    for (ContentsColumn& column : columns) {
        if (column.key == ColumnKey::Crc) column.header = kind.crcHeader;
    }
    return columns;
}

}  // namespace tovar
