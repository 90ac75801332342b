#include "archivers/commands/text_columns.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

TEST(TextColumns, PadByCharacters) {
    EXPECT_EQ(padRight("ab", 4), "ab  ");
    EXPECT_EQ(padLeft("ab", 4), "  ab");
    EXPECT_EQ(padRight("\xE8\xA1\xA8", 3), "\xE8\xA1\xA8  ");
    EXPECT_EQ(padRight("abcde", 4), "abcde") << "nothing is cut";
    EXPECT_EQ(padLeft(std::uint64_t{1234}, 6), "  1234");
    EXPECT_EQ(padLeft(UINT64_MAX, 3), "18446744073709551615");
}

TEST(TextColumns, CutByCharacters) {
    EXPECT_EQ(firstCharacters("a\xE8\xA1\xA8z", 2), "a\xE8\xA1\xA8");
    EXPECT_EQ(firstCharacters("ab", 5), "ab");
    EXPECT_EQ(firstCharacters("ab", 0), "");
}

TEST(TextColumns, HaveNoControlCharacters) {
    EXPECT_EQ(listedName("a\nb\tc\x7F\x01.txt"), "a_b_c__.txt");
    EXPECT_EQ(listedName("docs/\xC3\xA4.txt"), "docs/\xC3\xA4.txt");
}

TEST(TextColumns, WriteHexadecimal) {
    EXPECT_EQ(hexadecimal(0, 8), "00000000");
    EXPECT_EQ(hexadecimal(0xBB161E23, 8), "bb161e23");
    EXPECT_EQ(hexadecimal(0x801C, 4), "801c");
    EXPECT_EQ(hexadecimal(0x12345, 4), "12345");
}

TEST(TextColumns, WriteDosWords) {
    EXPECT_EQ(dosDateText(0x2AB1), "01-05-17");
    EXPECT_EQ(dosTimeText(0x8BDD), "17:30:58");
    EXPECT_EQ(dosDateText(0), "80-00-00") << "no date, shown as it is";
    EXPECT_EQ(dosDateText(0xFFFF), "07-15-31");
    EXPECT_EQ(dosTimeText(0xFFFF), "31:63:62");
}

TEST(TextColumns, WriteAttributes) {
    EXPECT_EQ(attributeText(attribute::kArchive, AttributeStyle::kFolderFirst), "a--w");
    EXPECT_EQ(attributeText(attribute::kFolder, AttributeStyle::kFolderFirst), "d--w");
    EXPECT_EQ(attributeText(attribute::kReadOnly, AttributeStyle::kLetters), "---R");
}

TEST(TextColumns, FindTheLastPart) {
    EXPECT_EQ(lastPart("docs/a.txt"), "a.txt");
    EXPECT_EQ(lastPart("docs\\a.txt"), "a.txt");
    EXPECT_EQ(lastPart("docs/sub/"), "sub");
    EXPECT_EQ(lastPart("a"), "a");
    EXPECT_EQ(lastPart("/"), "");
    EXPECT_EQ(lastPart(""), "");
}

TEST(TextColumns, ReckonPerMille) {
    EXPECT_EQ(perMille(84539, 135455), 624U);
    EXPECT_EQ(perMille(1, 0), 0U);
    EXPECT_EQ(perMille(100, 1), 9999U);
    EXPECT_EQ(perMille(UINT64_MAX, UINT64_MAX), 1000U);
    EXPECT_EQ(perMille(UINT64_MAX, 1), 9999U);
}

}  // namespace
}  // namespace archiver
