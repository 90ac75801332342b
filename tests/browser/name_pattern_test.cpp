#include "browser/name_pattern.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tovar::test {
namespace {

struct PatternCase {
    const char* name;
    std::wstring_view text, memberName;
    bool matches;
};

class NamePatternTest : public testing::TestWithParam<PatternCase> {};

TEST_P(NamePatternTest, Matches) {
    std::uint64_t charactersRead = 0;
    const NamePattern pattern(GetParam().text);
    EXPECT_EQ(pattern.matches(GetParam().memberName, charactersRead), GetParam().matches);
}

constexpr PatternCase kContained[] = {
    {"WholeName", L"readme.txt", L"readme.txt", true},
    {"AtTheBeginning", L"read", L"readme.txt", true},
    {"InTheMiddle", L"adm", L"readme.txt", true},
    {"AtTheEnd", L"txt", L"readme.txt", true},
    {"AfterAFalseStart", L"aab", L"aaab", true},
    {"NotContained", L"reader", L"readme.txt", false},
    {"LongerThanTheName", L"readme.txt2", L"readme.txt", false},
    {"UpperCaseText", L"README", L"readme.txt", true},
    {"UpperCaseName", L"readme", L"README.TXT", true},
    {"LettersBeyondAscii", L"\x00C4pfel", L"zwei \x00E4PFEL", true},
    {"CyrillicLetters", L"\x0444\x0430", L"\x0424\x0410\x0419\x041B", true},
    {"OtherLetterBeyondAscii", L"\x00C4pfel", L"\x00F6pfel", false},
    {"Blank", L" ", L"a b", true},
    {"BlankNotThere", L" ", L"ab", false},
    {"DotIsADot", L"a.b", L"axb", false},
    {"BracketIsABracket", L"[a]", L"x[A]", true},
    {"EmptyText", L"", L"readme.txt", false},
    {"EmptyName", L"a", L"", false},
};
constexpr PatternCase kWild[] = {
    {"StarForAnything", L"*.txt", L"readme.txt", true},
    {"StarForNothing", L"readme*.txt", L"readme.txt", true},
    {"WholeNameMustFit", L"*.tx", L"readme.txt", false},
    {"NotAnywhereInTheName", L"adm?", L"readme.txt", false},
    {"QuestionMarkForOne", L"readme.t?t", L"readme.txt", true},
    {"QuestionMarkNotForNone", L"readme.txt?", L"readme.txt", false},
    {"QuestionMarkNotForTwo", L"r?me.txt", L"readme.txt", false},
    {"StarsOnBothSides", L"*adm*", L"readme.txt", true},
    {"StarTakesMoreWhenTheRestDoesNotFit", L"*ab", L"aabab", true},
    {"SecondStarTakesMore", L"a*b*cd", L"axbxcxcd", true},
    {"SeveralStars", L"**a**", L"a", true},
    {"StarAlone", L"*", L"a", true},
    {"StarAloneAndNoName", L"*", L"", true},
    {"QuestionMarkAndNoName", L"?", L"", false},
    {"LettersOfEitherCase", L"READ*.TXT", L"readme.txt", true},
    {"StarDotStarWithADot", L"*.*", L"a.b", true},
    {"StarDotStarWithoutADot", L"*.*", L"makefile", true},
    {"OtherPatternsWithDotsWantTheDot", L"*.?", L"makefile", false},
    {"StarInTheName", L"a*c", L"a*bc", true},
    {"BeginningOnly", L"read*", L"a read", false},
};
std::string nameOf(const testing::TestParamInfo<PatternCase>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Contained, NamePatternTest, testing::ValuesIn(kContained), nameOf);
INSTANTIATE_TEST_SUITE_P(Wild, NamePatternTest, testing::ValuesIn(kWild), nameOf);

TEST(NamePattern, IsEmptyWithoutText) {
    EXPECT_TRUE(NamePattern().empty());
    EXPECT_TRUE(NamePattern(L"").empty());
    EXPECT_FALSE(NamePattern(L"*").empty());
}

TEST(NamePattern, CanBeAskedAgain) {
    const NamePattern pattern(L"b*");
    std::uint64_t charactersRead = 0;
    EXPECT_TRUE(pattern.matches(L"bbbbbbbbbbbbbbbbbbbbb", charactersRead));
    EXPECT_FALSE(pattern.matches(L"a", charactersRead));
    EXPECT_TRUE(pattern.matches(L"b", charactersRead));
}

TEST(NamePattern, CountsTheCharactersRead) {
    std::uint64_t charactersRead = 0;
    EXPECT_FALSE(NamePattern(L"x").matches(L"abcd", charactersRead));
    EXPECT_EQ(charactersRead, 4U);
    // 4 for the name; "aab" is compared at 2 places, 2 characters alike at each.
    EXPECT_FALSE(NamePattern(L"aab").matches(L"aaaa", charactersRead));
    EXPECT_EQ(charactersRead, 4U + 4U + 2U + 2U);
}

TEST(NamePattern, DoesNotTryEveryShareOfSeveralStars) {
    std::wstring text;
    for (int times = 0; times < 20; ++times) text += L"*a";
    text += L"*b";
    std::uint64_t charactersRead = 0;
    EXPECT_FALSE(NamePattern(text).matches(std::wstring(1000, L'a'), charactersRead));
    EXPECT_LE(charactersRead, 1000U * text.size());
}

}  // namespace
}  // namespace tovar::test
