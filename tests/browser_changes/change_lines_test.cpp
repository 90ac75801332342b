#include "browser/change_lines.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

TEST(ZipDeletionList, PutsFilesBeforeFolders) {
    EXPECT_EQ(zipDeletionList(L"docs/*.*\r\na.txt\r\nold/*.*\r\nb.txt\r\n"),
              L"a.txt\r\nb.txt\r\ndocs/*.*\r\nold/*.*\r\n");
}

TEST(ZipDeletionList, KeepsTheOrderWithinEach) {
    EXPECT_EQ(zipDeletionList(L"z\r\na\r\n"), L"z\r\na\r\n");
    EXPECT_EQ(zipDeletionList(L"z/*.*\r\na/*.*\r\n"), L"z/*.*\r\na/*.*\r\n");
}

TEST(ZipDeletionList, TakesNamesOutOfTheirQuotes) {
    EXPECT_EQ(zipDeletionList(L"\"my docs/*.*\"\r\n\"a b.txt\"\r\n\"x,y\"\r\n"), L"a b.txt\r\nx,y\r\nmy docs/*.*\r\n");
}

TEST(ZipDeletionList, LeavesMarksOfOtherLanguagesAlone) {
    EXPECT_EQ(zipDeletionList(L"@list\r\n-x\r\n[a].txt\r\n"), L"@list\r\n-x\r\n[a].txt\r\n");
}

TEST(ZipDeletionList, OfNothingIsEmpty) { EXPECT_EQ(zipDeletionList(L""), L""); }

TEST(ZipAddition, StoresSystemFilesAndFoldersAtTheMediumLevel) { EXPECT_EQ(kZipAdd, L"a -s -r -l6"); }

TEST(ZipDeletion, HasNoOptions) { EXPECT_EQ(kZipDelete, L"d"); }

TEST(LhaLines, DeleteTheMembersOfAList) {
    EXPECT_EQ(lhaDeletionLine(LR"(C:\a.lzh)", LR"(@C:\Temp\VTL1.TMP)", false), LR"(d C:\a.lzh @C:\Temp\VTL1.TMP)");
    EXPECT_EQ(lhaDeletionLine(LR"(C:\a b.lzh)", L"@x", false), LR"(d "C:\a b.lzh" @x)");
    EXPECT_EQ(lhaDeletionLine(LR"(C:\a,b.lzh)", L"@x", true), LR"(d -p1 "C:\a,b.lzh" @x)");
}

TEST(LhaLines, AddTheItemsOfAList) {
    EXPECT_EQ(lhaAdditionLine(LR"(C:\a.lzh)", LR"(@C:\Temp\VTL1.TMP)"), LR"(a -r2 -a1 -x1 C:\a.lzh @C:\Temp\VTL1.TMP)");
    EXPECT_EQ(lhaAdditionLine(LR"(C:\a b.lzh)", L"@x"), LR"(a -r2 -a1 -x1 "C:\a b.lzh" @x)");
}

TEST(LinesOf, HaveNoLineEndBehindTheLast) {
    EXPECT_EQ(linesOf({}), L"");
    EXPECT_EQ(linesOf({L"a", L"b c"}), L"a\r\nb c");
}

}  // namespace
}  // namespace tovar
