#include "shell/path_operations.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_shell.h"

namespace tovar {
namespace {

using Log = std::vector<std::wstring>;

class PathOperationsTest : public testing::Test {
protected:
    PathOperationsTest() {
        shell.files.addFolder(LR"(C:\Work\Sub)");
        shell.files.addFile(LR"(C:\Work\readme.txt)");
        shell.paths.folders[L'C'] = LR"(C:\Work\Sub)";
    }

    test::FakeShell shell;
    PathOperations& operations = shell.operations;
};

TEST_F(PathOperationsTest, TellFoldersFromFiles) {
    EXPECT_TRUE(operations.IsFolder(LR"(C:\Work)"));
    EXPECT_FALSE(operations.IsPlainFile(LR"(C:\Work)"));
    EXPECT_FALSE(operations.IsFolder(LR"(C:\Work\readme.txt)"));
    EXPECT_TRUE(operations.IsPlainFile(LR"(C:\Work\readme.txt)"));
}

TEST_F(PathOperationsTest, CountMissingPathsAsNeither) {
    EXPECT_FALSE(operations.IsFolder(LR"(C:\None)"));
    EXPECT_FALSE(operations.IsPlainFile(LR"(C:\None)"));
    EXPECT_FALSE(operations.IsFolder(L""));
    EXPECT_FALSE(operations.IsPlainFile(L""));
}

TEST_F(PathOperationsTest, CountUnreadablePathsAsNeither) {
    shell.files.fail(L"attributes", LR"(C:\Work)", test::FakeFileSystem::kAccessDenied);
    shell.files.fail(L"attributes", LR"(C:\Work\readme.txt)", test::FakeFileSystem::kAccessDenied);
    EXPECT_FALSE(operations.IsFolder(LR"(C:\Work)"));
    EXPECT_FALSE(operations.IsPlainFile(LR"(C:\Work\readme.txt)"));
}

TEST_F(PathOperationsTest, HiddenAndSystemFoldersAreFolders) {
    shell.files.addFolder(LR"(C:\Odd)", attribute::kFolder | attribute::kHidden | attribute::kSystem);
    EXPECT_TRUE(operations.IsFolder(LR"(C:\Odd)"));
}

TEST_F(PathOperationsTest, SetWorkingFolderSwitchesDriveThenFolder) {
    operations.SetWorkingFolder(LR"(c:\Work)");
    EXPECT_EQ(shell.paths.log, (Log{L"setCurrentDrive c", LR"(setCurrentFolder c:\Work)"}));
    EXPECT_EQ(shell.paths.currentFolder(), LR"(c:\Work)");
}

TEST_F(PathOperationsTest, SetWorkingFolderLeavesTheDriveForOtherPaths) {
    operations.SetWorkingFolder(LR"(\\server\share)");
    operations.SetWorkingFolder(L"Sub");
    EXPECT_EQ(shell.paths.log, (Log{LR"(setCurrentFolder \\server\share)", L"setCurrentFolder Sub"}));
}

TEST_F(PathOperationsTest, SetWorkingFolderIgnoresFailures) {
    operations.SetWorkingFolder(LR"(Q:\gone)");
    EXPECT_EQ(shell.paths.log, (Log{L"setCurrentDrive Q", LR"(setCurrentFolder Q:\gone)"}));
    EXPECT_EQ(shell.paths.currentFolder(), LR"(C:\Work\Sub)");
}

TEST_F(PathOperationsTest, CurrentFolderOfAddsTheSeparator) {
    EXPECT_EQ(operations.CurrentFolderOf(L"x"), LR"(C:\Work\Sub\)");
    EXPECT_TRUE(shell.paths.log.empty());
}

TEST_F(PathOperationsTest, CurrentFolderOfSwitchesTheDriveForGood) {
    shell.paths.folders[L'D'] = LR"(D:\data)";
    EXPECT_EQ(operations.CurrentFolderOf(LR"(D:\x)"), LR"(D:\data\)");
    EXPECT_EQ(shell.paths.drive, L'D');
    EXPECT_EQ(operations.CurrentFolderOf(L"x"), LR"(D:\data\)");
}

TEST_F(PathOperationsTest, CurrentFolderOfAMissingDriveIsThatOfTheCurrentOne) {
    EXPECT_EQ(operations.CurrentFolderOf(LR"(Q:\x)"), LR"(C:\Work\Sub\)");
}

TEST_F(PathOperationsTest, CurrentFolderIsEmptyWhenTheSystemHasNone) {
    shell.paths.folders.clear();
    EXPECT_EQ(operations.CurrentFolderOf(L"x"), L"");
    EXPECT_EQ(operations.ResolvePath(LR"(\x)"), LR"(\x)");
    EXPECT_EQ(operations.ResolvePath(LR"(..\x)"), L"x");
}

struct ResolveCase {
    const char* name;
    std::wstring_view path, expected;
};
class ResolvePathTest : public PathOperationsTest, public testing::WithParamInterface<ResolveCase> {};
TEST_P(ResolvePathTest, MakesPathsAbsolute) { EXPECT_EQ(operations.ResolvePath(GetParam().path), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(Paths, ResolvePathTest,
                         testing::Values(ResolveCase{"Empty", L"", L""},
                                         ResolveCase{"BareName", L"readme.txt", LR"(C:\Work\Sub\readme.txt)"},
                                         ResolveCase{"SlashIsNotLookedAt", L"a/b", LR"(C:\Work\Sub\a/b)"},
                                         ResolveCase{"DotsWithoutBackslash", L"..", LR"(C:\Work\Sub\..)"},
                                         ResolveCase{"Unc", LR"(\\server\share\x)", LR"(\\server\share\x)"},
                                         ResolveCase{"DriveRoot", LR"(C:\x\y)", LR"(C:\x\y)"},
                                         ResolveCase{"FromTheRoot", LR"(\x\y)", LR"(C:\x\y)"},
                                         ResolveCase{"Here", LR"(.\x)", LR"(C:\Work\Sub\x)"},
                                         ResolveCase{"Above", LR"(..\x)", LR"(C:\Work\x)"},
                                         ResolveCase{"OneLevelOnly", LR"(..\..\f)", LR"(C:\Work\..\f)"},
                                         ResolveCase{"SubFolder", LR"(a\b)", LR"(C:\Work\Sub\a\b)"},
                                         ResolveCase{"DotsInside", LR"(a\..\b)", LR"(C:\Work\Sub\a\..\b)"},
                                         ResolveCase{"RelativeToDrive", L"C:x", LR"(C:\Work\Sub\C:x)"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(PathOperationsTest, ResolvePathAboveTheRootStaysThere) {
    shell.paths.folders[L'C'] = LR"(C:\)";
    EXPECT_EQ(operations.ResolvePath(LR"(..\x)"), LR"(C:\x)");
}

TEST_F(PathOperationsTest, ResolvePathSwitchesTheDriveOfARootedPath) {
    shell.paths.folders[L'D'] = LR"(D:\data)";
    EXPECT_EQ(operations.ResolvePath(LR"(D:\x)"), LR"(D:\x)");
    EXPECT_EQ(shell.paths.drive, L'D');
}

TEST_F(PathOperationsTest, ShortPathNameIsCutAtItsNul) {
    shell.paths.shortNames[LR"(C:\Program Files)"] = std::wstring(L"C:\\PROGRA~1\0rest", 18);
    EXPECT_EQ(operations.ShortPathName(LR"(C:\Program Files)"), LR"(C:\PROGRA~1)");
}

TEST_F(PathOperationsTest, ShortPathNameWithoutOneIsThePath) {
    EXPECT_EQ(operations.ShortPathName(LR"(C:\not there)"), LR"(C:\not there)");
}

TEST_F(PathOperationsTest, FindOnSearchPathGivesTheFullPath) {
    shell.paths.searchable[L"UnZip32.dll"] = std::wstring(L"C:\\Windows\\UnZip32.dll\0x", 24);
    EXPECT_EQ(operations.FindOnSearchPath(L"UnZip32.dll"), LR"(C:\Windows\UnZip32.dll)");
}

TEST_F(PathOperationsTest, FindOnSearchPathIsEmptyForAMissingFile) {
    EXPECT_EQ(operations.FindOnSearchPath(L"UnZip32.dll"), L"");
}

TEST_F(PathOperationsTest, SystemErrorTextIsCutAtItsNul) {
    shell.information.errorTexts[2] = std::wstring(L"File not found.\0xyz", 19);
    EXPECT_EQ(operations.SystemErrorText(2), L"File not found.");
    EXPECT_EQ(operations.SystemErrorText(99999), L"");
}

}  // namespace
}  // namespace tovar
