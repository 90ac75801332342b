#include "browser/contents_columns.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;

Texts headersOf(const ContentsColumns& kind) {
    Texts headers;
    for (const ContentsColumn& column : contentsColumnsOf(kind)) headers.emplace_back(column.header);
    return headers;
}

TEST(ContentsColumns, StandInTheirOrderWithTheirMeasures) {
    struct Row {
        std::wstring_view header, measuringText;
        double factor;
        ColumnAlignment alignment;
    };
    const Row rows[] = {
        {L"Name", L"Name", 4, ColumnAlignment::Left},
        {L"Original (Bytes)", L"Original (Bytes)", 1.4, ColumnAlignment::Right},
        {L"Packed (Bytes)", L"Packed  (Bytes)", 1.2, ColumnAlignment::Right},
        {L"Ratio", L"Ratio", 2.2, ColumnAlignment::Right},
        {L"File Type", L"File Type", 2.6, ColumnAlignment::Left},
        {L"Modified", L"Modified", 2.8, ColumnAlignment::Centre},
        {L"Attr", L"Attr", 2.3, ColumnAlignment::Left},
        {L"Type", L"Type", 2.1, ColumnAlignment::Left},
        {L"CRC", L"CRC", 2.3, ColumnAlignment::Left},
    };
    const auto columns = contentsColumnsOf({});
    ASSERT_EQ(columns.size(), std::size(rows));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].header, rows[i].header);
        EXPECT_EQ(columns[i].measuringText, rows[i].measuringText);
        EXPECT_EQ(columns[i].factor, rows[i].factor);
        EXPECT_EQ(columns[i].alignment, rows[i].alignment);
    }
}

TEST(ContentsColumns, OfACabArchiveAreFive) {
    const ContentsColumns cab{.packed = false, .ratio = false, .type = false, .crc = false};
    EXPECT_EQ(headersOf(cab), (Texts{L"Name", L"Original (Bytes)", L"File Type", L"Modified", L"Attr"}));
}

TEST(ContentsColumns, OfATarArchiveAreSix) {
    const ContentsColumns tar{.attributes = false, .packed = false, .ratio = false};
    EXPECT_EQ(headersOf(tar), (Texts{L"Name", L"Original (Bytes)", L"File Type", L"Modified", L"Type", L"CRC"}));
}

TEST(ContentsColumns, OfAnAceArchiveLackTheAttributes) {
    const ContentsColumns ace{.attributes = false};
    EXPECT_EQ(headersOf(ace), (Texts{L"Name", L"Original (Bytes)", L"Packed (Bytes)", L"Ratio", L"File Type",
                                     L"Modified", L"Type", L"CRC"}));
}

TEST(ContentsColumns, OfAZipArchiveEndWithCrc32) {
    const ContentsColumns zip{.crcHeader = L"CRC32"};
    EXPECT_EQ(headersOf(zip).back(), L"CRC32");
    EXPECT_EQ(contentsColumnsOf(zip).back().measuringText, L"CRC");
    EXPECT_EQ(headersOf(zip).size(), 9U);
}

}  // namespace
}  // namespace tovar::test
