#include "drivers/member_choice.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

struct ChoiceCase {
    const char* name;
    std::wstring_view words, path;
    bool chosen;
};
class Choice : public testing::TestWithParam<ChoiceCase> {};
TEST_P(Choice, IsByWords) { EXPECT_EQ(MemberChoice(GetParam().words).contains(GetParam().path), GetParam().chosen); }
INSTANTIATE_TEST_SUITE_P(
    Words, Choice,
    testing::Values(
        ChoiceCase{"NoWord", L"", L"a", true}, ChoiceCase{"Blanks", L" \r\n\t", L"a", true},
        ChoiceCase{"All", L"*.*", L"docs\\noextension", true}, ChoiceCase{"Star", L"*", L"docs\\a", true},
        ChoiceCase{"Path", L"docs/a.txt", L"docs\\a.txt", true},
        ChoiceCase{"PathCase", L"DOCS\\A.txt", L"docs\\a.TXT", true},
        ChoiceCase{"UmlautCase", L"\xC4.txt", L"\xE4.txt", true},
        ChoiceCase{"OtherPath", L"docs/a.txt", L"docs\\b.txt", false},
        ChoiceCase{"NameIsAPath", L"a.txt", L"docs\\a.txt", false}, ChoiceCase{"Name", L"a.txt", L"a.txt", true},
        ChoiceCase{"LeadingSeparator", L"\\a.txt", L"a.txt", true},
        ChoiceCase{"Folder", L"docs/*.*", L"docs\\a.txt", true},
        ChoiceCase{"FolderDeep", L"docs/*.*", L"docs\\b\\c", true},
        ChoiceCase{"FolderItself", L"docs/*.*", L"docs", true},
        ChoiceCase{"FolderStar", L"docs/*", L"docs\\b\\c", true},
        ChoiceCase{"FolderSeparator", L"docs/", L"docs\\b\\c", true},
        ChoiceCase{"FolderDeeper", L"docs/b/*.*", L"docs\\b\\c\\d", true},
        ChoiceCase{"FolderOfALongerName", L"docs/*.*", L"docs2\\a", false},
        ChoiceCase{"FolderFurtherIn", L"docs/*.*", L"x\\docs\\a", false},
        ChoiceCase{"Pattern", L"*.txt", L"a.txt", true},
        ChoiceCase{"PatternInFolders", L"*.txt", L"docs\\deep\\a.txt", true},
        ChoiceCase{"PatternMiss", L"*.txt", L"a.txt2", false}, ChoiceCase{"Question", L"a?.txt", L"ab.txt", true},
        ChoiceCase{"QuestionMiss", L"a?.txt", L"a.txt", false}, ChoiceCase{"DosRule", L"read*.*", L"README", true},
        ChoiceCase{"DosRuleMiss", L"read*.*", L"write", false},
        ChoiceCase{"PatternWithFolder", L"docs/*.txt", L"docs\\a.txt", true},
        ChoiceCase{"PatternWithFolderMiss", L"docs/*.txt", L"a.txt", false},
        ChoiceCase{"PatternFolder", L"d*/*.*", L"docs\\a", true},
        ChoiceCase{"ManyStars", L"*a*a*a*a*b", L"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", false},
        ChoiceCase{"TwoWords", L"a.txt b.txt", L"b.txt", true}, ChoiceCase{"Quoted", L"\"a b.txt\"", L"a b.txt", true},
        ChoiceCase{"QuotedWhole", L"\"a b.txt\"", L"a", false},
        ChoiceCase{"Lines", L"a\r\nb\r\n\"c d\"\r\n", L"c d", true},
        ChoiceCase{"LinesMiss", L"a\r\nb\r\n", L"c", false},
        ChoiceCase{"QuoteEndsWithItsLine", L"\"a\nb c", L"b", true}, ChoiceCase{"AWordAmongAll", L"a *.*", L"b", true},
        ChoiceCase{"NoBracketClass", L"[ab]", L"a", false}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(MemberChoice, IsQuickForManyNames) {
    std::wstring words;
    for (int name = 0; name < 100'000; ++name) words.append(L"docs/").append(std::to_wstring(name)).append(L"\r\n");
    const MemberChoice choice(words);
    int chosen = 0;
    for (int name = 0; name < 200'000; ++name)
        chosen += choice.contains(std::wstring(L"docs\\").append(std::to_wstring(name)));
    EXPECT_EQ(chosen, 100'000);
}

}  // namespace
}  // namespace tovar
