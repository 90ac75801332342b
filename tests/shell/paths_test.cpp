#include "shell/paths.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

struct PathCase {
    const char* name;
    std::wstring_view path, expected;
};

struct PathQuestion {
    const char* name;
    std::wstring_view path;
    bool expected;
};

template <class Case>
std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

class HasDriveRootTest : public testing::TestWithParam<PathQuestion> {};
TEST_P(HasDriveRootTest, LooksAtTheSecondAndThirdCharacter) {
    EXPECT_EQ(HasDriveRoot(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Paths, HasDriveRootTest,
    testing::Values(PathQuestion{"Root", LR"(C:\)", true}, PathQuestion{"PathBelowRoot", LR"(C:\a\b.txt)", true},
                    PathQuestion{"AnyFirstCharacter", LR"(1:\x)", true}, PathQuestion{"DriveAlone", L"C:", false},
                    PathQuestion{"RelativeToDrive", L"C:dir", false}, PathQuestion{"ForwardSlash", L"C:/", false},
                    PathQuestion{"RootFurtherOn", LR"(aC:\)", false}, PathQuestion{"Unc", LR"(\\server\share)", false},
                    PathQuestion{"Empty", L"", false}, PathQuestion{"OneCharacter", L"C", false}),
    nameOf<PathQuestion>);

class IsUncPathTest : public testing::TestWithParam<PathQuestion> {};
TEST_P(IsUncPathTest, LooksAtTheFirstTwoCharacters) { EXPECT_EQ(IsUncPath(GetParam().path), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(Paths, IsUncPathTest,
                         testing::Values(PathQuestion{"Share", LR"(\\server\share)", true},
                                         PathQuestion{"TwoBackslashes", LR"(\\)", true},
                                         PathQuestion{"OneBackslash", LR"(\dir)", false},
                                         PathQuestion{"ForwardSlashes", L"//server", false},
                                         PathQuestion{"Drive", LR"(C:\\x)", false}, PathQuestion{"Empty", L"", false},
                                         PathQuestion{"OneCharacter", LR"(\)", false}),
                         nameOf<PathQuestion>);

class StripTrailingSeparatorTest : public testing::TestWithParam<PathCase> {};
TEST_P(StripTrailingSeparatorTest, TakesOneSeparatorOff) {
    EXPECT_EQ(StripTrailingSeparator(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Paths, StripTrailingSeparatorTest,
    testing::Values(PathCase{"DriveRoot", LR"(C:\)", LR"(C:\)"}, PathCase{"TwoBackslashes", LR"(\\)", LR"(\\)"},
                    PathCase{"OnlyOneIsTaken", LR"(a\b\\)", LR"(a\b\)"}, PathCase{"ForwardSlash", L"a/b/", L"a/b"},
                    PathCase{"Folder", LR"(C:\a\)", LR"(C:\a)"}, PathCase{"NoneThere", LR"(C:\a)", LR"(C:\a)"},
                    PathCase{"MixedEndsWithTheOther", LR"(a\b/)", LR"(a\b/)"},
                    PathCase{"MixedEndsWithItsOwn", LR"(a/b\)", L"a/b"}, PathCase{"OneBackslash", LR"(\)", L""},
                    PathCase{"NoSeparator", L"abc", L"abc"}, PathCase{"Server", LR"(\\server\)", LR"(\\server)"},
                    PathCase{"Empty", L"", L""}),
    nameOf<PathCase>);

class AddTrailingSeparatorTest : public testing::TestWithParam<PathCase> {};
TEST_P(AddTrailingSeparatorTest, AddsThePathsOwnSeparator) {
    EXPECT_EQ(AddTrailingSeparator(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Paths, AddTrailingSeparatorTest,
    testing::Values(PathCase{"DriveAlone", L"C:", L"C:"}, PathCase{"ForwardSlash", L"dir/sub", L"dir/sub/"},
                    PathCase{"Backslash", LR"(C:\x)", LR"(C:\x\)"}, PathCase{"AlreadyThere", LR"(C:\x\)", LR"(C:\x\)"},
                    PathCase{"NoSeparator", L"abc", L"abc"}, PathCase{"MixedEndsWithTheOther", LR"(a\b/)", LR"(a\b/\)"},
                    PathCase{"Empty", L"", L""}),
    nameOf<PathCase>);

class ParentPathTest : public testing::TestWithParam<PathCase> {};
TEST_P(ParentPathTest, KeepsTheSeparator) { EXPECT_EQ(ParentPath(GetParam().path), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(Paths, ParentPathTest,
                         testing::Values(PathCase{"File", LR"(C:\a\b.txt)", LR"(C:\a\)"},
                                         PathCase{"BareName", L"name", L"name"},
                                         PathCase{"ForwardSlash", L"dir/sub", L"dir/"},
                                         PathCase{"FolderWithSeparator", L"dir/sub/", L"dir/sub/"},
                                         PathCase{"Mixed", LR"(a\b/c)", LR"(a\)"},
                                         PathCase{"BelowRoot", LR"(C:\b)", LR"(C:\)"}, PathCase{"Empty", L"", L""}),
                         nameOf<PathCase>);

class FileNamePartTest : public testing::TestWithParam<PathCase> {};
TEST_P(FileNamePartTest, StandsBehindTheLastSeparator) {
    EXPECT_EQ(FileNamePart(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Paths, FileNamePartTest,
                         testing::Values(PathCase{"File", LR"(C:\a\b.txt)", L"b.txt"},
                                         PathCase{"BareName", L"name", L"name"},
                                         PathCase{"FolderWithSeparator", L"dir/sub/", L""},
                                         PathCase{"Mixed", LR"(a\b/c)", L"b/c"}, PathCase{"Empty", L"", L""}),
                         nameOf<PathCase>);

class BaseNameTest : public testing::TestWithParam<PathCase> {};
TEST_P(BaseNameTest, EndsBeforeTheLastDot) { EXPECT_EQ(BaseName(GetParam().path), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(
    Paths, BaseNameTest,
    testing::Values(PathCase{"TwoDots", L"x.tar.gz", L"x.tar"}, PathCase{"LeadingDot", L".profile", L""},
                    PathCase{"DotAtTheEnd", L"file.", L"file"}, PathCase{"NoDot", L"file", L"file"},
                    PathCase{"WithPath", LR"(C:\a.b\file.txt)", L"file"},
                    PathCase{"DotInFolderOnly", LR"(C:\my.dir\file)", L"file"}, PathCase{"Empty", L"", L""}),
    nameOf<PathCase>);

class ExtensionPartTest : public testing::TestWithParam<PathCase> {};
TEST_P(ExtensionPartTest, StandsBehindTheLastDotOfTheWholePath) {
    EXPECT_EQ(ExtensionPart(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Paths, ExtensionPartTest,
                         testing::Values(PathCase{"DotInFolderOnly", LR"(a.b\c)", LR"(b\c)"},
                                         PathCase{"DotInFolderOfDrive", LR"(C:\my.dir\file)", LR"(dir\file)"},
                                         PathCase{"DotAtTheEnd", L"file.", L""}, PathCase{"NoDot", L"file", L""},
                                         PathCase{"TwoDots", L"x.tar.gz", L"gz"},
                                         PathCase{"TrailingSeparator", LR"(C:\dir.zip\)", L"zip"},
                                         PathCase{"CaseIsKept", L"a.Zip", L"Zip"}, PathCase{"Empty", L"", L""}),
                         nameOf<PathCase>);

class QuoteIfNeededTest : public testing::TestWithParam<PathCase> {};
TEST_P(QuoteIfNeededTest, QuotesBlankAndComma) { EXPECT_EQ(QuoteIfNeeded(GetParam().path), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(Paths, QuoteIfNeededTest,
                         testing::Values(PathCase{"Blank", L"a b", L"\"a b\""}, PathCase{"Comma", L"x,y", L"\"x,y\""},
                                         PathCase{"Plain", LR"(C:\a.zip)", LR"(C:\a.zip)"},
                                         PathCase{"Quoted", L"\"a b\"", L"\"a b\""},
                                         PathCase{"QuoteAtTheStartOnly", L"\"a b", L"\"a b"},
                                         PathCase{"QuoteAtTheEndOnly", L"a b\"", L"a b\""},
                                         PathCase{"QuoteInside", L"a \" b", L"\"a \" b\""},
                                         PathCase{"OtherSigns", L"a;b(c)&d", L"a;b(c)&d"},
                                         PathCase{"BlankAlone", L" ", L"\" \""}, PathCase{"Empty", L"", L""}),
                         nameOf<PathCase>);

class TrimBlanksTest : public testing::TestWithParam<PathCase> {};
TEST_P(TrimBlanksTest, TakesBlanksOffBothEnds) { EXPECT_EQ(trimBlanks(GetParam().path), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(Paths, TrimBlanksTest,
                         testing::Values(PathCase{"BothEnds", L"  a b ", L"a b"}, PathCase{"None", L"ab", L"ab"},
                                         PathCase{"TabStays", L"\ta", L"\ta"}, PathCase{"BlanksAlone", L"   ", L""},
                                         PathCase{"Empty", L"", L""}),
                         nameOf<PathCase>);

TEST(CutAtNull, EndsBeforeTheFirstNul) {
    EXPECT_EQ(CutAtNull(std::wstring_view(L"ab\0cd\0", 6)), L"ab");
    EXPECT_EQ(CutAtNull(std::wstring_view(L"\0ab", 3)), L"");
}

TEST(CutAtNull, LeavesATextWithoutNul) { EXPECT_EQ(CutAtNull(L"abc"), L"abc"); }

TEST(SingleQuote, AlwaysAddsApostrophes) {
    EXPECT_EQ(SingleQuote(L"a b"), L"'a b'");
    EXPECT_EQ(SingleQuote(L"'a'"), L"''a''");
    EXPECT_EQ(SingleQuote(L""), L"''");
}

TEST(UpperCase, ChangesLatinLettersOnly) { EXPECT_EQ(upperCase(L"zip Tar.9_\u0131\u00E9"), L"ZIP TAR.9_\u0131\u00E9"); }

// Where a name's second byte would be 0x5C in code page 932, the wide text holds no "\" at all.
TEST(Paths, KnowNoSeparatorInsideDoubleByteCharacters) {
    EXPECT_EQ(FileNamePart(L"C:\\\u8868\u30BD.zip"), L"\u8868\u30BD.zip");
    EXPECT_EQ(StripTrailingSeparator(L"C:\\\u8868"), L"C:\\\u8868");
    EXPECT_EQ(AddTrailingSeparator(L"C:\\\u8868"), L"C:\\\u8868\\");
}

TEST(Paths, TakeVeryLongPaths) {
    const std::wstring name(32000, L'n');
    const std::wstring path = LR"(C:\)" + name + LR"(\)";
    EXPECT_EQ(StripTrailingSeparator(path), LR"(C:\)" + name);
    EXPECT_EQ(FileNamePart(LR"(C:\)" + name), name);
    EXPECT_EQ(ParentPath(path), path);
}

}  // namespace
}  // namespace tovar
