#include "drivers/interned_texts.h"

#include <gtest/gtest.h>

#include <string>

namespace tovar {
namespace {

TEST(InternedTexts, NumbersTextsInTheOrderTheyCame) {
    InternedTexts texts;
    EXPECT_EQ(texts.intern(L"b"), 0U);
    EXPECT_EQ(texts.intern(L"a"), 1U);
    EXPECT_EQ(texts.intern(L""), 2U);
    EXPECT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts.at(0), L"b");
    EXPECT_EQ(texts.at(1), L"a");
    EXPECT_EQ(texts.at(2), L"");
}

TEST(InternedTexts, KeepsEqualTextsOnce) {
    InternedTexts texts;
    EXPECT_EQ(texts.intern(L"same"), 0U);
    EXPECT_EQ(texts.intern(std::wstring(L"sa") + L"me"), 0U);
    EXPECT_EQ(texts.intern(L""), 1U);
    EXPECT_EQ(texts.intern(L""), 1U);
    EXPECT_EQ(texts.size(), 2U);
}

TEST(InternedTexts, TellsTextsApartThatDifferInOneCharacterOrInLength) {
    InternedTexts texts;
    EXPECT_EQ(texts.intern(L"ab"), 0U);
    EXPECT_EQ(texts.intern(L"ba"), 1U);
    EXPECT_EQ(texts.intern(L"AB"), 2U);
    EXPECT_EQ(texts.intern(L"a"), 3U);
    EXPECT_EQ(texts.intern(std::wstring(1, L'\0')), 4U);
    EXPECT_EQ(texts.intern(std::wstring(2, L'\0')), 5U);
}

TEST(InternedTexts, FindsEachOfManyAgain) {
    constexpr std::uint32_t kMany = 100'000;
    InternedTexts texts;
    for (std::uint32_t number = 0; number < kMany; ++number) {
        ASSERT_EQ(texts.intern(L"folder" + std::to_wstring(number)), number);
    }
    for (std::uint32_t number = 0; number < kMany; ++number) {
        const std::wstring text = L"folder" + std::to_wstring(number);
        ASSERT_EQ(texts.at(number), text);
        ASSERT_EQ(texts.intern(text), number);
    }
    EXPECT_EQ(texts.size(), kMany);
}

TEST(InternedTexts, KeepsTextsLongerThanABlock) {
    const std::wstring longText(100'000, L'x');
    InternedTexts texts;
    EXPECT_EQ(texts.intern(L"before"), 0U);
    EXPECT_EQ(texts.intern(longText), 1U);
    EXPECT_EQ(texts.intern(L"after"), 2U);
    EXPECT_EQ(texts.at(0), L"before");
    EXPECT_EQ(texts.at(1), longText);
    EXPECT_EQ(texts.at(2), L"after");
}

TEST(InternedTexts, StartsAnewAfterClear) {
    InternedTexts texts;
    texts.intern(L"old");
    texts.clear();
    EXPECT_EQ(texts.size(), 0U);
    EXPECT_THROW(static_cast<void>(texts.at(0)), std::out_of_range);
    EXPECT_EQ(texts.intern(L"new"), 0U);
    EXPECT_EQ(texts.intern(L"old"), 1U);
}

TEST(ChunkedList, KeepsElementsInOrderAcrossBlocks) {
    ChunkedList<int> list;
    for (int number = 0; number < 5000; ++number) list.append(number * 3);
    ASSERT_EQ(list.size(), 5000U);
    for (std::uint32_t index : {0U, 1023U, 1024U, 1025U, 4999U}) {
        EXPECT_EQ(list[index], static_cast<int>(index) * 3);
        EXPECT_EQ(list.at(index), static_cast<int>(index) * 3);
    }
}

TEST(ChunkedList, RefusesIndexesOutside) {
    ChunkedList<int> list;
    EXPECT_THROW(static_cast<void>(list.at(0)), std::out_of_range);
    list.append(7);
    EXPECT_EQ(list.at(0), 7);
    EXPECT_THROW(static_cast<void>(list.at(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(list.at(0xFFFFFFFF)), std::out_of_range);
}

TEST(ChunkedList, IsEmptyAfterClear) {
    ChunkedList<int> list;
    for (int number = 0; number < 2000; ++number) list.append(number);
    list.clear();
    EXPECT_EQ(list.size(), 0U);
    list.append(42);
    EXPECT_EQ(list.at(0), 42);
}

TEST(ChunkedList, StopsAtItsLimit) {
    ChunkedList<int, 3> list;
    for (int number = 0; number < 3; ++number) list.append(number);
    EXPECT_THROW(list.append(3), std::length_error);
    EXPECT_EQ(list.size(), 3U);
    EXPECT_EQ(list.at(2), 2);
}

}  // namespace
}  // namespace tovar
