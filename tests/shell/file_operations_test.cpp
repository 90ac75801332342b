#include "shell/file_operations.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "shell/current_folder_keeper.h"
#include "shell/fakes/fake_desktop_files.h"
#include "shell/fakes/fake_shell.h"

namespace tovar::test {
namespace {

struct CountingPump final : MessagePump {
    int times = 0;
    void processPending() override { ++times; }
};

/// A text with the NUL characters that are written "|".
std::wstring list(std::wstring_view text) {
    std::wstring written(text);
    for (wchar_t& each : written) {
        if (each == L'|') each = L'\0';
    }
    return written;
}

class FileOperationsTest : public testing::Test {
protected:
    FileOperationsTest() {
        shell_.files.addFolder(LR"(C:\Work)");
        shell_.files.addFolder(LR"(C:\Out)");
        shell_.files.addFile(LR"(C:\Work\a.txt)");
    }
    [[nodiscard]] const FileOperation& only() const {
        EXPECT_EQ(desktop_.operations.size(), 1U);
        return desktop_.operations.front();
    }
    [[nodiscard]] std::wstring currentFolder() const { return shell_.paths.currentFolder(); }

    int window_ = 0;
    WindowHandle owner_ = &window_;
    FakeShell shell_;
    FakeDesktopFiles desktop_;
    CountingPump pump_;
    FileOperations operations_{desktop_, shell_.operations, pump_};
    std::wstring target_ = LR"(C:\Out)";
};

TEST_F(FileOperationsTest, FillTheRequestWithListsThatEndInTwoNuls) {
    EXPECT_TRUE(operations_.ShellFileOperation(owner_, FileFunction::Copy, list(L"a|b c|d"), L"T", 0x1234));
    EXPECT_EQ(only().owner, owner_);
    EXPECT_EQ(only().function, FileFunction::Copy);
    EXPECT_EQ(only().sources, list(L"a|b c|d||"));
    EXPECT_EQ(only().target, list(L"T||"));
    EXPECT_EQ(only().flags, 0x1234);
    EXPECT_EQ(pump_.times, 1) << "messages run afterwards";
}

TEST_F(FileOperationsTest, HaveTheNumbersOfTheDesktop) {
    EXPECT_EQ(static_cast<int>(FileFunction::Move), 1);
    EXPECT_EQ(static_cast<int>(FileFunction::Copy), 2);
    EXPECT_EQ(static_cast<int>(FileFunction::Delete), 3);
    EXPECT_EQ(file_flags::kUnseen, 532);
}

TEST_F(FileOperationsTest, FailWithTheDesktop) {
    desktop_.result.code = 2;
    EXPECT_FALSE(operations_.ShellFileOperation(owner_, FileFunction::Copy, L"a", L"T", 0));
    EXPECT_EQ(pump_.times, 1);
}

TEST_F(FileOperationsTest, FailWhenTheUserHasStoppedThem) {
    desktop_.result.aborted = true;
    EXPECT_FALSE(operations_.ShellFileOperation(owner_, FileFunction::Copy, L"a", L"T", 0));
}

TEST_F(FileOperationsTest, TrapWhatIsThrown) {
    desktop_.whileRunning = [] { throw std::bad_alloc(); };
    EXPECT_FALSE(operations_.ShellFileOperation(owner_, FileFunction::Copy, L"a", L"T", 0));
    EXPECT_FALSE(operations_.CopyFiles(owner_, LR"(C:\Work)", target_, L"a.txt", 0));
    EXPECT_FALSE(operations_.MoveFiles(owner_, LR"(C:\Work)", target_, L"a.txt", true));
    EXPECT_FALSE(operations_.DeleteFiles(owner_, LR"(C:\Work)", L"a.txt", true));
}

TEST_F(FileOperationsTest, CopyFromTheSourceFolderWithTheCallersFlags) {
    EXPECT_TRUE(operations_.CopyFiles(owner_, LR"(C:\Work)", target_, list(L"a.txt|sub"), 0x4321));
    EXPECT_EQ(only(), (FileOperation{owner_, FileFunction::Copy, list(L"a.txt|sub||"), list(LR"(C:\Out\||)"), 0x4321}));
    EXPECT_EQ(target_, LR"(C:\Out\)");
}

TEST_F(FileOperationsTest, LeaveTheSourceFolderAsTheCurrentOne) {
    std::wstring during;
    desktop_.whileRunning = [&] { during = currentFolder(); };
    operations_.CopyFiles(owner_, LR"(C:\Work)", target_, L"a.txt", 0);
    EXPECT_EQ(during, LR"(C:\Work\)");
    EXPECT_EQ(currentFolder(), LR"(C:\Work\)");
}

TEST_F(FileOperationsTest, CopyNothingWithoutTheSourceFolder) {
    EXPECT_FALSE(operations_.CopyFiles(owner_, LR"(C:\None)", target_, L"a.txt", 0));
    EXPECT_FALSE(operations_.CopyFiles(owner_, LR"(C:\Work\a.txt)", target_, L"a.txt", 0));
    EXPECT_TRUE(desktop_.operations.empty());
    EXPECT_EQ(target_, LR"(C:\Out)");
    EXPECT_EQ(currentFolder(), LR"(C:\)");
    EXPECT_EQ(pump_.times, 0);
}

TEST_F(FileOperationsTest, CopyNothingWithoutTheTargetFolder) {
    target_ = LR"(C:\None)";
    EXPECT_FALSE(operations_.CopyFiles(owner_, LR"(C:\Work)", target_, L"a.txt", 0));
    EXPECT_TRUE(desktop_.operations.empty());
    EXPECT_EQ(target_, LR"(C:\None)");
    EXPECT_EQ(currentFolder(), LR"(C:\)");
}

TEST_F(FileOperationsTest, MoveWithTheDesktopsQuestions) {
    EXPECT_TRUE(operations_.MoveFiles(owner_, LR"(C:\Work\)", target_, L"a.txt", true));
    EXPECT_EQ(only(), (FileOperation{owner_, FileFunction::Move, list(L"a.txt||"), list(LR"(C:\Out\||)"), 0}));
    EXPECT_EQ(target_, LR"(C:\Out\)");
    EXPECT_EQ(currentFolder(), LR"(C:\Work\)");
}

TEST_F(FileOperationsTest, MoveWithoutAnyQuestion) {
    EXPECT_TRUE(operations_.MoveFiles(owner_, LR"(C:\Work)", target_, L"a.txt", false));
    EXPECT_EQ(only().flags, 0x214);
}

TEST_F(FileOperationsTest, MoveNothingWithoutBothFolders) {
    EXPECT_FALSE(operations_.MoveFiles(owner_, LR"(C:\None)", target_, L"a.txt", true));
    target_ = LR"(C:\None)";
    EXPECT_FALSE(operations_.MoveFiles(owner_, LR"(C:\Work)", target_, L"a.txt", true));
    EXPECT_TRUE(desktop_.operations.empty());
}

TEST_F(FileOperationsTest, DeleteIntoTheRecycleBin) {
    EXPECT_TRUE(operations_.DeleteFiles(owner_, LR"(C:\Work)", list(L"a.txt|b"), true));
    EXPECT_EQ(only(), (FileOperation{owner_, FileFunction::Delete, list(L"a.txt|b||"), list(L"||"), 0x40}));
    EXPECT_EQ(currentFolder(), LR"(C:\Work\)");
}

TEST_F(FileOperationsTest, DeleteForEver) {
    EXPECT_TRUE(operations_.DeleteFiles(owner_, LR"(C:\Work)", L"a.txt", false));
    EXPECT_EQ(only().flags, 0x14);
}

TEST_F(FileOperationsTest, DeleteNothingWithoutTheFolder) {
    EXPECT_FALSE(operations_.DeleteFiles(owner_, LR"(C:\None)", L"a.txt", false));
    EXPECT_TRUE(desktop_.operations.empty());
    EXPECT_EQ(currentFolder(), LR"(C:\)");
}

TEST(FileListOf, PutsANulForEachLineEnd) {
    EXPECT_EQ(fileListOf(L"a\r\nb c\r\nd"), list(L"a|b c|d"));
    EXPECT_EQ(fileListOf(L"a\r\n"), L"a");
    EXPECT_EQ(fileListOf(L"\r\na\r\n\r\nb\r\n"), list(L"a|b"));
    EXPECT_EQ(fileListOf(L""), L"");
}

TEST_F(FileOperationsTest, LeaveTheHostsFolderToTheKeeper) {
    {
        const CurrentFolderKeeper keeper(shell_.paths);
        operations_.DeleteFiles(owner_, LR"(C:\Work)", L"a.txt", false);
        EXPECT_EQ(currentFolder(), LR"(C:\Work\)");
    }
    EXPECT_EQ(currentFolder(), LR"(C:\)");
}

}  // namespace
}  // namespace tovar::test
