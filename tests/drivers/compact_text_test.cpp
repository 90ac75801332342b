#include "drivers/compact_text.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

TEST(CompactText, ReadsBothForms) {
    constexpr unsigned char kPlain[] = {'a', 0xE9, 0x00, 0xFF};
    const CompactText plain(kPlain, 4);
    EXPECT_TRUE(plain.isPlain());
    EXPECT_TRUE(plain.wide().empty());
    ASSERT_EQ(plain.size(), 4U);
    EXPECT_EQ(plain[1], L'\u00E9');
    EXPECT_EQ(plain[3], L'\u00FF');
    EXPECT_EQ(std::wstring(plain), std::wstring(L"a\u00E9\0\u00FF", 4));

    const std::wstring_view source = L"a\u0100";
    const CompactText wide(source);
    EXPECT_FALSE(wide.isPlain());
    EXPECT_EQ(wide.wide(), source);
    ASSERT_EQ(wide.size(), 2U);
    EXPECT_EQ(wide[1], L'\u0100');
    EXPECT_EQ(std::wstring(wide), source);
}

TEST(CompactText, OfNothingIsEmpty) {
    EXPECT_TRUE(CompactText().empty());
    EXPECT_TRUE(CompactText(std::wstring_view()).empty());
    EXPECT_EQ(std::wstring(CompactText()), L"");
    EXPECT_EQ(CompactText(), L"");
}

TEST(CompactText, IsEqualWhenItsCharactersAre) {
    constexpr unsigned char kPlain[] = {'a', 0xE9};
    EXPECT_EQ(CompactText(kPlain, 2), L"a\u00E9");
    EXPECT_FALSE(CompactText(kPlain, 2) == L"a\u00E8");
    EXPECT_FALSE(CompactText(kPlain, 2) == L"a\u00E9b");
    EXPECT_FALSE(CompactText(kPlain, 2) == L"a");
}

TEST(CompactText, FitsEightBitsAsFarAsItsLastCharacterDoes) {
    EXPECT_TRUE(CompactText::fitsPlain(L""));
    EXPECT_TRUE(CompactText::fitsPlain(L"abc\u00FF"));
    EXPECT_FALSE(CompactText::fitsPlain(L"abc\u0100"));
    EXPECT_FALSE(CompactText::fitsPlain(L"\uFF41"));
    EXPECT_FALSE(CompactText::fitsPlain(L"\U00010041"));
}

TEST(CompactText, ReplacesWhatItIsCopiedTo) {
    constexpr unsigned char kPlain[] = {'n', 'e', 'w'};
    std::wstring text = L"an older text";
    CompactText(kPlain, 3).copyTo(text);
    EXPECT_EQ(text, L"new");
    CompactText(L"wide \u65E5").copyTo(text);
    EXPECT_EQ(text, L"wide \u65E5");
}

}  // namespace
}  // namespace tovar
