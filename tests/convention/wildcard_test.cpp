#include "archivers/convention/wildcard.h"

#include <gtest/gtest.h>

#include <string>

namespace archiver {
namespace {

using Words = std::vector<std::string>;

TEST(SplitWords, PartsAtBlanksTabsAndLineEnds) {
    EXPECT_EQ(splitWords(""), Words{});
    EXPECT_EQ(splitWords(" \t\r\n"), Words{});
    EXPECT_EQ(splitWords("  a b\tc\r\nd "), (Words{"a", "b", "c", "d"}));
}

TEST(SplitWords, GroupsByQuotesAnywhere) {
    EXPECT_EQ(splitWords(R"("a b" c)"), (Words{"a b", "c"}));
    EXPECT_EQ(splitWords(R"(C:\my" dir\"x y)"), (Words{R"(C:\my dir\x)", "y"}));
    EXPECT_EQ(splitWords(R"("C:\my dir\" y)"), (Words{R"(C:\my dir\)", "y"}));
    EXPECT_EQ(splitWords(R"(a "" b)"), (Words{"a", "", "b"}));
    EXPECT_EQ(splitWords(R"(a "b c)"), (Words{"a", "b c"}));
}

struct MatchCase {
    const char* name;
    const char* patterns;
    const char* member;
    bool expected;
    PatternScope scope = PatternScope::kByPattern;
};

class Wildcard : public ::testing::TestWithParam<MatchCase> {};

TEST_P(Wildcard, ChoosesMembers) {
    WildcardSet set(GetParam().patterns, GetParam().scope);
    EXPECT_EQ(set.matches(GetParam().member), GetParam().expected);
    EXPECT_EQ(set.matches(GetParam().member), GetParam().expected) << "the second time";
}

std::string caseName(const ::testing::TestParamInfo<MatchCase>& each) { return each.param.name; }

INSTANTIATE_TEST_SUITE_P(
    Everything, Wildcard,
    ::testing::Values(MatchCase{"EmptyText", "", "docs/a", true}, MatchCase{"BlankText", "  ", "docs/a", true},
                      MatchCase{"EmptyQuotes", "\"\"", "docs/a", true},
                      MatchCase{"StarDotStar", "*.*", "docs/README", true},
                      MatchCase{"StarDotStarFolder", "*.*", "docs/", true}, MatchCase{"Star", "*", "docs/a.b.c", true},
                      MatchCase{"BesideOthers", "x.txt *.*", "README", true}, MatchCase{"EmptyName", "*.*", "", true},
                      MatchCase{"RootFolder", "\\*.*", "docs/a", true}, MatchCase{"RootAlone", "/", "docs/a", true}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    LastPart, Wildcard,
    ::testing::Values(
        MatchCase{"SameName", "a.txt", "a.txt", true}, MatchCase{"InFolder", "a.txt", "x/y/a.txt", true},
        MatchCase{"InFolderBackslash", "a.txt", "x\\y\\a.txt", true}, MatchCase{"OtherName", "a.txt", "b.txt", false},
        MatchCase{"LongerName", "a.txt", "a.txt2", false}, MatchCase{"FolderItself", "docs", "x/docs/", true},
        MatchCase{"FolderIsNotItsContent", "docs", "docs/a.txt", false},
        MatchCase{"Extension", "*.txt", "x/a.txt", true}, MatchCase{"OtherExtension", "*.txt", "x/a.txt.gz", false},
        MatchCase{"ExtensionOfFolder", "*.d", "conf.d/a.txt", false}, MatchCase{"QuestionMark", "a?c", "abc", true},
        MatchCase{"QuestionMarkNeedsOne", "a?c", "ac", false},
        MatchCase{"QuestionMarkIsOneCharacter", "a?c",
                  "a\xE8\xA1\xA8"
                  "c",
                  true},
        MatchCase{"StarInside", "a*c", "abbbc", true}, MatchCase{"StarIsNothing", "a*c", "ac", true},
        MatchCase{"TwoStars", "*a*b", "xaxxb", true}, MatchCase{"GoesBack", "*ab*ab", "abxabab", true},
        MatchCase{"GoesBackInVain", "*ab*ac", "abxabab", false}, MatchCase{"StarsInARow", "a***", "a", true},
        MatchCase{"Brackets", "a[1].txt", "a[1].txt", true},
        MatchCase{"BracketsAreNoClass", "a[1].txt", "a1.txt", false}, MatchCase{"NameIsEmpty", "a*", "", false}),
    caseName);

INSTANTIATE_TEST_SUITE_P(OptionalDot, Wildcard,
                         ::testing::Values(MatchCase{"WithoutDot", "readme.*", "README", true},
                                           MatchCase{"WithDot", "readme.*", "README.txt", true},
                                           MatchCase{"WithTwoDots", "readme.*", "README.txt.gz", true},
                                           MatchCase{"OtherName", "readme.*", "READER", false},
                                           MatchCase{"StarBefore", "read*.*", "README", true},
                                           MatchCase{"InPath", "docs/readme.*", "docs/README", true},
                                           MatchCase{"DotInFolder", "readme.*", "conf.d/readme", true},
                                           MatchCase{"NotInTheMiddle", "a.*b", "ab", false}),
                         caseName);

INSTANTIATE_TEST_SUITE_P(SeveralPatterns, Wildcard,
                         ::testing::Values(MatchCase{"First", "a.txt b.txt", "a.txt", true},
                                           MatchCase{"Second", "a.txt b.txt", "x/b.txt", true},
                                           MatchCase{"None", "a.txt b.txt", "c.txt", false},
                                           MatchCase{"QuotedBlank", "\"a b.txt\" c", "a b.txt", true},
                                           MatchCase{"QuotedIsOne", "\"a b.txt\" c", "b.txt", false}),
                         caseName);

INSTANTIATE_TEST_SUITE_P(WholePath, Wildcard,
                         ::testing::Values(MatchCase{"SamePath", "docs/a.txt", "docs/a.txt", true},
                                           MatchCase{"BackslashPattern", "docs\\a.txt", "docs/a.txt", true},
                                           MatchCase{"BackslashName", "docs/a.txt", "docs\\a.txt", true},
                                           MatchCase{"DeeperPath", "docs/a.txt", "x/docs/a.txt", false},
                                           MatchCase{"RootPattern", "/a.txt", "a.txt", true},
                                           MatchCase{"RootPatternDeeper", "/a.txt", "docs/a.txt", false},
                                           MatchCase{"RootName", "docs/a.txt", "/docs/a.txt", true},
                                           MatchCase{"StarStays", "docs/*.txt", "docs/x/a.txt", false},
                                           MatchCase{"StarInFolder", "d*/a.txt", "docs/a.txt", true},
                                           MatchCase{"StarInFolderStays", "d*/a.txt", "docs/x/a.txt", false},
                                           MatchCase{"QuestionMarkStays", "docs?a.txt", "docs/a.txt", false},
                                           MatchCase{"QuestionMarkInPathStays", "x/docs?a.txt", "x/docs/a.txt", false},
                                           MatchCase{"StarTakesNoEarlierFolder", "*a/b*c", "xaa/bbd", false}),
                         caseName);

INSTANTIATE_TEST_SUITE_P(BelowAFolder, Wildcard,
                         ::testing::Values(MatchCase{"StarDotStar", "docs/*.*", "docs/README", true},
                                           MatchCase{"Star", "docs/*", "docs/a.txt", true},
                                           MatchCase{"Separator", "docs\\", "docs/a.txt", true},
                                           MatchCase{"AnyDepth", "docs/*.*", "docs/x/y/z", true},
                                           MatchCase{"TheFolderItself", "docs/*.*", "docs/", true},
                                           MatchCase{"OtherFolder", "docs/*.*", "docs2/a", false},
                                           MatchCase{"SameFileName", "docs/*.*", "docs", false},
                                           MatchCase{"NotAtTheEnd", "docs/*.*", "x/docs/a", false},
                                           MatchCase{"TwoParts", "docs/x/*.*", "docs/x/a", true},
                                           MatchCase{"TwoPartsOther", "docs/x/*.*", "docs/y/a", false},
                                           MatchCase{"PatternFolder", "d?cs/*", "dacs/x/a", true},
                                           MatchCase{"PatternFolderOther", "d?cs/*", "dxacs/x/a", false}),
                         caseName);

INSTANTIATE_TEST_SUITE_P(Case, Wildcard,
                         ::testing::Values(MatchCase{"Ascii", "ReadMe.TXT", "rEADmE.txt", true},
                                           MatchCase{"Latin", "\xC3\x84.txt", "\xC3\xA4.TXT", true},
                                           MatchCase{"Greek", "\xCE\xA9", "\xCF\x89", true},
                                           MatchCase{"Cyrillic", "\xD0\x94*", "\xD0\xB4.txt", true},
                                           MatchCase{"OtherLetter", "\xC3\x84.txt", "a.txt", false}),
                         caseName);

INSTANTIATE_TEST_SUITE_P(
    Scopes, Wildcard,
    ::testing::Values(MatchCase{"WholePathAtRoot", "a.txt", "a.txt", true, PatternScope::kWholePath},
                      MatchCase{"WholePathBelow", "a.txt", "docs/a.txt", false, PatternScope::kWholePath},
                      MatchCase{"WholePathAll", "*.*", "docs/a", true, PatternScope::kWholePath},
                      MatchCase{"LastPartOfPattern", "x/a.txt", "docs/a.txt", true, PatternScope::kLastPart},
                      MatchCase{"LastPartOther", "docs/a.txt", "docs/b.txt", false, PatternScope::kLastPart},
                      MatchCase{"LastPartOfFolder", "x/docs/", "docs/", true, PatternScope::kLastPart}),
    caseName);

INSTANTIATE_TEST_SUITE_P(PlainNames, Wildcard,
                         ::testing::Values(MatchCase{"FolderAsName", "docs/sub", "docs/sub/", true},
                                           MatchCase{"FolderBelowFolder", "docs/sub/", "docs/sub/x/", true},
                                           MatchCase{"FolderAbove", "docs/sub/", "docs/", false},
                                           MatchCase{"PathWithSeparatorsAtItsEnd", "a/b", "a/b//", true},
                                           MatchCase{"OtherCase", "DOCS/Sub/", "docs/sub/x", true},
                                           MatchCase{"OnlySeparators", "a", "///", false}),
                         caseName);

INSTANTIATE_TEST_SUITE_P(
    FirstParts, Wildcard,
    ::testing::Values(MatchCase{"Itself", "docs/x", "docs/x", true, PatternScope::kFirstParts},
                      MatchCase{"Below", "docs/x", "docs/x/y/z", true, PatternScope::kFirstParts},
                      MatchCase{"Longer", "docs/x", "docs/xy", false, PatternScope::kFirstParts},
                      MatchCase{"PatternBelow", "d*/x?", "docs/x1/y", true, PatternScope::kFirstParts},
                      MatchCase{"PatternItself", "d*/x?", "docs/x1", true, PatternScope::kFirstParts},
                      MatchCase{"PatternOther", "d*/x?", "docs/y/x1", false, PatternScope::kFirstParts},
                      MatchCase{"LastPartOfPlain", "x", "docs/x", true, PatternScope::kFirstParts}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    FolderAndLast, Wildcard,
    ::testing::Values(MatchCase{"Direct", "docs/a.txt", "docs/a.txt", true, PatternScope::kFolderAndLast},
                      MatchCase{"Deeper", "docs/a.txt", "docs/x/y/a.txt", true, PatternScope::kFolderAndLast},
                      MatchCase{"OtherFolder", "docs/a.txt", "x/docs/a.txt", false, PatternScope::kFolderAndLast},
                      MatchCase{"OtherName", "docs/a.txt", "docs/b.txt", false, PatternScope::kFolderAndLast},
                      MatchCase{"Patterns", "d*/*.txt", "docs/x/a.txt", true, PatternScope::kFolderAndLast},
                      MatchCase{"OptionalDot", "docs/read*.*", "docs/x/readme", true, PatternScope::kFolderAndLast},
                      MatchCase{"LastPartOfPlain", "a.txt", "docs/a.txt", true, PatternScope::kFolderAndLast}),
    caseName);

struct ClassCase {
    const char* name;
    const char* pattern;
    const char* member;
    bool expected;
};

class WildcardClass : public ::testing::TestWithParam<ClassCase> {};

TEST_P(WildcardClass, IsOneCharacter) {
    const std::string pattern = GetParam().pattern;
    WildcardSet set(std::span(&pattern, 1), {.scope = PatternScope::kByPattern, .classes = true});
    EXPECT_EQ(set.matches(GetParam().member), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, WildcardClass,
    ::testing::Values(
        ClassCase{"Listed", "a[12]", "a2", true}, ClassCase{"NotListed", "a[12]", "a3", false},
        ClassCase{"Range", "a[1-3]x", "a2x", true}, ClassCase{"OutOfRange", "a[1-3]x", "a4x", false},
        ClassCase{"TwoRanges", "[a-cx-z]1", "Y1", true}, ClassCase{"Negated", "[!a-c]", "d", true},
        ClassCase{"NegatedByCaret", "[^a-c]", "b", false}, ClassCase{"NoSeparator", "x[!a]y", "x/y", false},
        ClassCase{"Bracket", "a[[]1]", "a[1]", true}, ClassCase{"ClosingBracketFirst", "a[]]", "a]", true},
        ClassCase{"ClosingBracketFirstNegated", "a[!]]", "a]", false}, ClassCase{"HyphenAtTheEnd", "a[1-]", "a-", true},
        ClassCase{"NotClosed", "a[1", "a[1", true}, ClassCase{"NotClosedOther", "a[1", "a1", false},
        ClassCase{"ToTheLetter", "a[1].txt", "docs/a[1].txt", true},
        ClassCase{"AndAsAClass", "a[1].txt", "docs/a1.txt", true}, ClassCase{"BehindAStar", "*[0-9]", "page12", true},
        ClassCase{"BehindAStarInVain", "*[0-9]", "page", false},
        ClassCase{"FolderToTheLetter", "a[1]/*.*", "a[1]/x", true},
        ClassCase{"FolderAsAClass", "a[1]/*.*", "a1/x/y", true}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(WildcardSet, KnowsThatItTakesEverything) {
    EXPECT_TRUE(WildcardSet().matchesAll());
    EXPECT_TRUE(WildcardSet("").matchesAll());
    EXPECT_TRUE(WildcardSet("*.*").matchesAll());
    EXPECT_TRUE(WildcardSet("*").matchesAll());
    EXPECT_TRUE(WildcardSet("\"*.*\"").matchesAll());
    EXPECT_FALSE(WildcardSet("*.txt").matchesAll());
    EXPECT_FALSE(WildcardSet("docs/*.*").matchesAll());
}

// With a comparison of each name with each pattern, or of each folder above a name anew, this would not end.
TEST(WildcardSet, LooksPlainNamesUp) {
    std::vector<std::string> names;
    for (int number = 0; number < 200'000; ++number) names.push_back(std::to_string(number).append("/*.*"));
    WildcardSet set(names, {});
    std::string deep;
    for (int count = 0; count < 500'000; ++count) deep += "x/";
    EXPECT_FALSE(set.matches(deep));
    for (int number = 0; number < 200'000; ++number) ASSERT_TRUE(set.matches(std::to_string(number).append("/a")));
    EXPECT_FALSE(set.matches("200000/a"));
}

// With a matcher that tries every way this would not end.
TEST(WildcardSet, TakesNoLongerForManyStars) {
    std::string pattern;
    for (int count = 0; count < 40; ++count) {
        pattern += "*a";
    }
    pattern += "*b";
    WildcardSet set(pattern);
    EXPECT_FALSE(set.matches(std::string(20000, 'a')));
    EXPECT_TRUE(set.matches(std::string(20000, 'a') + "b"));
}

}  // namespace
}  // namespace archiver
