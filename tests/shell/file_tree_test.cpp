#include "shell/file_tree.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_file_system.h"

namespace tovar {
namespace {

TEST(RemoveTree, RemovesAllThatIsInAFolder) {
    test::FakeFileSystem files;
    files.addFile(LR"(C:\t\own\a\b.txt)");
    files.addFile(LR"(C:\t\own\read only)", "", attribute::kReadOnly);
    files.addFolder(LR"(C:\t\own\empty)");
    files.addFile(LR"(C:\t\other.txt)");
    removeTree(files, LR"(C:\t\own\)");
    EXPECT_EQ(files.find(LR"(C:\t\own)"), nullptr);
    EXPECT_NE(files.find(LR"(C:\t\other.txt)"), nullptr);
}

TEST(RemoveTree, LeavesWhatIsInUse) {
    test::FakeFileSystem files;
    files.addFile(LR"(C:\t\own\a.txt)");
    files.addFile(LR"(C:\t\own\b.txt)");
    files.fail(L"deleteFile", LR"(C:\t\own\a.txt)", 32);
    removeTree(files, LR"(C:\t\own\)");
    EXPECT_NE(files.find(LR"(C:\t\own\a.txt)"), nullptr);
    EXPECT_EQ(files.find(LR"(C:\t\own\b.txt)"), nullptr);
}

TEST(RemoveTree, DoesNotFollowLinks) {
    test::FakeFileSystem files;
    files.addFolder(LR"(C:\t\own\link)").link = true;
    removeTree(files, LR"(C:\t\own\)");
    EXPECT_EQ(files.calls(L"listFolder"), std::vector<std::wstring>{LR"(C:\t\own\)"});
    EXPECT_EQ(files.find(LR"(C:\t\own)"), nullptr);
}

}  // namespace
}  // namespace tovar
