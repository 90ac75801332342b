#include "shell/text_split.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

using Items = std::vector<std::wstring_view>;

TEST(SplitText, CutsAtEverySeparator) { EXPECT_EQ(splitText(L"a,b,,c", L","), (Items{L"a", L"b", L"", L"c"})); }

TEST(SplitText, KeepsEmptyItemsAtTheEnds) { EXPECT_EQ(splitText(L",", L","), (Items{L"", L""})); }

TEST(SplitText, TakesTheWholeSeparator) { EXPECT_EQ(splitText(L"a\r\nb\nc\r", L"\r\n"), (Items{L"a", L"b\nc\r"})); }

TEST(SplitText, MakesOneItemWithoutSeparator) { EXPECT_EQ(splitText(L"abc", L","), (Items{L"abc"})); }

TEST(SplitText, MakesNoItemOfAnEmptyText) { EXPECT_TRUE(splitText(L"", L",").empty()); }

}  // namespace
}  // namespace tovar
