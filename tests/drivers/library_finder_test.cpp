#include "drivers/library_finder.h"

#include <gtest/gtest.h>

#include "drivers/module_loader.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_system_paths.h"

namespace tovar {
namespace {

struct FakeLibraryFolders final : LibraryFolders {
    std::vector<std::wstring> folders{LR"(C:\Host)", LR"(C:\Windows\system32)", LR"(C:\Windows)", LR"(D:\Tools\)"};
    std::vector<std::wstring> searchOrder() const override { return folders; }
};

class LibraryFinderTest : public testing::Test {
protected:
    LibraryFinderTest() { paths.folders[L'C'] = LR"(C:\Archives)"; }

    // What the system's search yields is a file that is there.
    void systemFinds(const std::wstring& path) {
        paths.searchable[file] = path;
        files.addFile(path);
    }

    const std::wstring file = moduleFileName(L"UnZip32.dll");
    test::FakeFileSystem files;
    test::FakeSystemPaths paths{files};
    FakeLibraryFolders folders;
    LibraryFinder finder{paths, files, folders, LR"(C:\Component)"};
};

TEST_F(LibraryFinderTest, TakesWhatTheSystemFinds) {
    systemFinds(LR"(C:\Windows\system32\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Windows\system32\)" + file);
}

TEST_F(LibraryFinderTest, FindsNothingWhereNothingIs) { EXPECT_EQ(finder.find(L"UnZip32.dll"), L""); }

TEST_F(LibraryFinderTest, DoesNotTakeACopyInTheCurrentFolder) {
    systemFinds(LR"(C:\Archives\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), L"");
}

TEST_F(LibraryFinderTest, KnowsTheCurrentFolderInAnyCase) {
    systemFinds(LR"(c:\ARCHIVES\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), L"");
}

TEST_F(LibraryFinderTest, DoesNotTakeACopyBelowTheCurrentFolder) {
    systemFinds(LR"(C:\Archives\bin\)" + file);  // a relative folder in the search path leads there
    EXPECT_EQ(finder.find(L"UnZip32.dll"), L"");
}

TEST_F(LibraryFinderTest, TakesAFolderThatOnlyBeginsLikeTheCurrentOne) {
    systemFinds(LR"(C:\Archives2\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Archives2\)" + file);
}

TEST_F(LibraryFinderTest, LooksFurtherBehindTheCurrentFolder) {
    systemFinds(LR"(C:\Archives\)" + file);
    files.addFile(LR"(D:\Tools\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(D:\Tools\)" + file);
}

TEST_F(LibraryFinderTest, TakesTheFirstOfTheSearchOrder) {
    systemFinds(LR"(C:\Archives\)" + file);
    files.addFile(LR"(D:\Tools\)" + file);
    files.addFile(LR"(C:\Windows\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Windows\)" + file);
}

TEST_F(LibraryFinderTest, TakesTheCurrentFolderWhereItIsTheHostsOwn) {
    paths.folders[L'C'] = LR"(C:\Host)";
    systemFinds(LR"(C:\Host\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Host\)" + file);
}

TEST_F(LibraryFinderTest, TakesNoFolderOfTheLibrarysName) {
    systemFinds(LR"(C:\Archives\)" + file);
    files.addFolder(LR"(C:\Windows\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), L"");
}

TEST_F(LibraryFinderTest, LooksInTheOwnFolderLast) {
    files.addFile(LR"(C:\Component\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Component\)" + file);
    systemFinds(LR"(C:\Windows\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Windows\)" + file);
}

TEST_F(LibraryFinderTest, TakesTheOwnFoldersBeforeThatOfTheCurrentFolder) {
    systemFinds(LR"(C:\Archives\)" + file);
    files.addFile(LR"(C:\Component\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Component\)" + file);
}

TEST_F(LibraryFinderTest, TakesTheOwnFolderEvenAsTheCurrentOne) {
    paths.folders[L'C'] = LR"(C:\Component)";
    systemFinds(LR"(C:\Component\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Component\)" + file);
}

TEST_F(LibraryFinderTest, WalksTheOrderItselfWhereTheCurrentFolderIsUnknown) {
    paths.folders.clear();
    systemFinds(LR"(C:\Somewhere\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), L"");
    files.addFile(LR"(C:\Windows\)" + file);
    EXPECT_EQ(finder.find(L"UnZip32.dll"), LR"(C:\Windows\)" + file);
}

TEST_F(LibraryFinderTest, NeedsNoOwnFolder) {
    const LibraryFinder homeless{paths, files, folders, L""};
    EXPECT_EQ(homeless.find(L"UnZip32.dll"), L"");
}

}  // namespace
}  // namespace tovar
