#include <gtest/gtest.h>

#include "shell/fakes/fake_shell.h"

namespace tovar {
namespace {

using Log = std::vector<std::wstring>;

class CreateFolderTreeTest : public testing::Test {
protected:
    Log created() const { return shell.files.calls(L"createFolder"); }

    test::FakeShell shell;
};

TEST_F(CreateFolderTreeTest, CreatesWhatIsMissingFromTheTop) {
    shell.files.addFolder(LR"(C:\a)");
    EXPECT_TRUE(shell.operations.CreateFolderTree(LR"(C:\a\b\c)"));
    EXPECT_EQ(created(), (Log{LR"(C:\a\b\)", LR"(C:\a\b\c\)"}));
    EXPECT_TRUE(shell.operations.IsFolder(LR"(C:\a\b\c)"));
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(CreateFolderTreeTest, TakesASeparatorAtTheEnd) {
    EXPECT_TRUE(shell.operations.CreateFolderTree(LR"(C:\a\)"));
    EXPECT_EQ(created(), (Log{LR"(C:\a\)"}));
}

TEST_F(CreateFolderTreeTest, IsDoneWithAnExistingFolder) {
    shell.files.addFolder(LR"(C:\a)");
    EXPECT_TRUE(shell.operations.CreateFolderTree(LR"(C:\a)"));
    EXPECT_TRUE(created().empty());
}

TEST_F(CreateFolderTreeTest, ResolvesRelativePaths) {
    shell.files.addFolder(LR"(C:\Work)");
    shell.paths.folders[L'C'] = LR"(C:\Work)";
    EXPECT_TRUE(shell.operations.CreateFolderTree(L"new"));
    EXPECT_EQ(created(), (Log{LR"(C:\Work\new\)"}));
}

TEST_F(CreateFolderTreeTest, BeginsBelowTheServer) {
    shell.files.addFolder(LR"(\\server\share)");
    EXPECT_TRUE(shell.operations.CreateFolderTree(LR"(\\server\share\x\y)"));
    EXPECT_EQ(created(), (Log{LR"(\\server\share\x\)", LR"(\\server\share\x\y\)"}));
}

TEST_F(CreateFolderTreeTest, GivesUpOnAServerAlone) {
    EXPECT_FALSE(shell.operations.CreateFolderTree(LR"(\\server)"));
    EXPECT_TRUE(created().empty());
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(CreateFolderTreeTest, GivesUpWithoutDrive) {
    shell.paths.folders.clear();
    EXPECT_FALSE(shell.operations.CreateFolderTree(LR"(a\b)"));
    EXPECT_TRUE(created().empty());
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(CreateFolderTreeTest, GivesUpOnAnEmptyPath) {
    EXPECT_FALSE(shell.operations.CreateFolderTree(L""));
    EXPECT_TRUE(created().empty());
}

TEST_F(CreateFolderTreeTest, SaysWhyTheFirstFailureHappened) {
    shell.files.fail(L"createFolder", LR"(C:\a\b\)", test::FakeFileSystem::kAccessDenied);
    shell.information.errorTexts[5] = L"Access denied.";
    EXPECT_FALSE(shell.operations.CreateFolderTree(LR"(C:\a\b\c)"));
    EXPECT_EQ(created(), (Log{LR"(C:\a\)", LR"(C:\a\b\)"}));
    ASSERT_EQ(shell.messages.shown.size(), 1u);
    EXPECT_EQ(shell.messages.shown[0].text, L"Access denied.");
    EXPECT_EQ(shell.messages.shown[0].title, L"TovarEx");
    EXPECT_EQ(shell.messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(shell.messages.shown[0].owner, nullptr);
}

TEST_F(CreateFolderTreeTest, FailsWhereAFileStandsInTheWay) {
    shell.files.addFile(LR"(C:\a)");
    EXPECT_FALSE(shell.operations.CreateFolderTree(LR"(C:\a\b)"));
    EXPECT_EQ(created(), (Log{LR"(C:\a\)"}));
    EXPECT_EQ(shell.messages.shown.size(), 1u);
}

// Another program makes the tree while this one is told that it cannot.
TEST_F(CreateFolderTreeTest, CountsATreeThatAnotherPartyMade) {
    struct RacingFiles final : FileSystem {
        test::FakeFileSystem& files;
        explicit RacingFiles(test::FakeFileSystem& under) : files(under) {}
        std::optional<FileAttributes> attributes(const std::wstring& path) const override {
            return files.attributes(path);
        }
        std::optional<FileStatus> status(const std::wstring& path) const override { return files.status(path); }
        SystemErrorCode setAttributes(const std::wstring& path, FileAttributes value) override {
            return files.setAttributes(path, value);
        }
        SystemErrorCode createFolder(const std::wstring&) override {
            files.addFolder(LR"(C:\a\b)");
            return test::FakeFileSystem::kAlreadyExists;
        }
        SystemErrorCode listFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) const override {
            return files.listFolder(folder, entries);
        }
        SystemErrorCode readFile(const std::wstring& path, std::string& bytes) const override {
            return files.readFile(path, bytes);
        }
        SystemErrorCode writeFile(const std::wstring& path, std::string_view bytes) override {
            return files.writeFile(path, bytes);
        }
        SystemErrorCode deleteFile(const std::wstring& path) override { return files.deleteFile(path); }
        SystemErrorCode removeFolder(const std::wstring& path) override { return files.removeFolder(path); }
    } racing(shell.files);
    PathOperations operations(racing, shell.paths, shell.information, shell.messages);
    EXPECT_TRUE(operations.CreateFolderTree(LR"(C:\a\b)"));
    EXPECT_EQ(shell.messages.shown.size(), 1u);
}

}  // namespace
}  // namespace tovar
