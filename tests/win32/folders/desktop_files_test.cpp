#include "shell/win32/windows_desktop_files.h"

#include <windows.h>
// windows.h first
#include <shellapi.h>

#include <array>
#include <fstream>
#include <iterator>

#include "shell/current_folder_keeper.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "win32/folders/dialog_driver.h"

namespace tovar::test {
namespace {

struct CountingPump final : MessagePump {
    int times = 0;
    void processPending() override { ++times; }
};

/// Real folders: "from" with two files and a folder, and "to".
class DesktopFilesTest : public testing::Test {
protected:
    DesktopFilesTest() {
        for (const wchar_t* const folder : {L"from", L"from\\sub", L"to"}) EXPECT_TRUE(makeFolder(room_ / folder));
        write(room_ / L"from\\a.txt", "first");
        write(room_ / L"from\\b c,d.txt", "second");
        write(room_ / L"from\\sub\\inside.txt", "third");
    }

    static void write(const std::wstring& path, const std::string& text) {
        std::ofstream(std::filesystem::path(path), std::ios::binary) << text;
    }
    static std::string read(const std::wstring& path) {
        std::ifstream file(std::filesystem::path(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    [[nodiscard]] bool isThere(const std::wstring& name) const {
        return ::GetFileAttributesW((room_ / name).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    TemporaryFolder room_;
    WindowsFileSystem files_;
    WindowsSystemPaths systemPaths_;
    WindowsSystemInformation information_;
    FakeMessageBoxes messages_;
    PathOperations paths_{files_, systemPaths_, information_, messages_};
    WindowsDesktopFiles desktop_;
    CountingPump pump_;
    FileOperations operations_{desktop_, paths_, pump_};
    CurrentFolderKeeper keeper_{systemPaths_};  // the last: it leaves the room before that goes
    std::wstring target_ = room_ / L"to";
};

TEST_F(DesktopFilesTest, CopiesFilesAndFoldersWithoutAQuestion) {
    write(room_ / L"to\\a.txt", "is there already");
    const std::wstring list = fileListOf(L"a.txt\r\nb c,d.txt\r\nsub\r\n");
    EXPECT_TRUE(operations_.CopyFiles(nullptr, room_ / L"from", target_, list, file_flags::kUnseen));
    EXPECT_EQ(target_, room_ / L"to\\");
    EXPECT_EQ(read(room_ / L"to\\a.txt"), "first");
    EXPECT_EQ(read(room_ / L"to\\b c,d.txt"), "second");
    EXPECT_EQ(read(room_ / L"to\\sub\\inside.txt"), "third");
    EXPECT_EQ(read(room_ / L"from\\a.txt"), "first");
    EXPECT_EQ(pump_.times, 1);
}

TEST_F(DesktopFilesTest, LeavesTheSourceFolderAsTheCurrentOne) {
    operations_.CopyFiles(nullptr, room_ / L"from", target_, L"a.txt", file_flags::kUnseen);
    EXPECT_EQ(systemPaths_.currentFolder(), room_ / L"from");
}

TEST_F(DesktopFilesTest, CopiesNamesOutsideTheCodePage) {
    const std::wstring name = L"\u8868\u0416\u00E9.txt";
    write(room_ / (L"from\\" + name), "x");
    EXPECT_TRUE(operations_.CopyFiles(nullptr, room_ / L"from", target_, name, file_flags::kUnseen));
    EXPECT_EQ(read(room_ / (L"to\\" + name)), "x");
}

TEST_F(DesktopFilesTest, MovesFilesAndFoldersWithoutAQuestion) {
    EXPECT_TRUE(operations_.MoveFiles(nullptr, room_ / L"from", target_, fileListOf(L"a.txt\r\nsub"), false));
    EXPECT_EQ(read(room_ / L"to\\a.txt"), "first");
    EXPECT_EQ(read(room_ / L"to\\sub\\inside.txt"), "third");
    EXPECT_FALSE(isThere(L"from\\a.txt"));
    EXPECT_FALSE(isThere(L"from\\sub"));
    EXPECT_TRUE(isThere(L"from\\b c,d.txt"));
}

TEST_F(DesktopFilesTest, DeletesForEverWithoutAQuestion) {
    EXPECT_TRUE(operations_.DeleteFiles(nullptr, room_ / L"from", fileListOf(L"a.txt\r\nsub"), false));
    EXPECT_FALSE(isThere(L"from\\a.txt"));
    EXPECT_FALSE(isThere(L"from\\sub"));
    EXPECT_TRUE(isThere(L"from\\b c,d.txt"));
}

TEST_F(DesktopFilesTest, TouchesNothingWithoutAName) {
    for (const std::wstring& list : {std::wstring(), std::wstring(3, L'\0')}) {
        EXPECT_FALSE(operations_.DeleteFiles(nullptr, room_ / L"from", list, false));
    }
    EXPECT_TRUE(isThere(L"from\\a.txt"));
    EXPECT_TRUE(isThere(L"from\\sub\\inside.txt"));
}

TEST_F(DesktopFilesTest, FailsForANameThatIsNotThere) {
    EXPECT_FALSE(
        operations_.CopyFiles(nullptr, room_ / L"from", target_, L"none.txt", file_flags::kUnseen | FOF_NOERRORUI));
}

TEST_F(DesktopFilesTest, AsksBeforeSomethingGoesToTheRecycleBin) {
    DialogDriver driver;
    driver.then(L"", [](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, IDNO, 0); });
    EXPECT_FALSE(operations_.DeleteFiles(nullptr, room_ / L"from", L"a.txt", true));
    EXPECT_TRUE(isThere(L"from\\a.txt"));
}

TEST_F(DesktopFilesTest, PutsFilesIntoTheRecycleBin) {
    // Nothing may be left in the bin of the user who runs the tests.
    std::array<wchar_t, 2> own{};
    if (::GetEnvironmentVariableW(L"TOVAREX_OWN_RECYCLE_BIN", own.data(), 2) == 0) GTEST_SKIP();
    SHQUERYRBINFO before{}, after{};
    before.cbSize = after.cbSize = sizeof before;
    ASSERT_EQ(::SHQueryRecycleBinW(nullptr, &before), S_OK);
    DialogDriver driver;
    driver.then(L"", [](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, IDYES, 0); });
    EXPECT_TRUE(operations_.DeleteFiles(nullptr, room_ / L"from", L"a.txt", true));
    EXPECT_FALSE(isThere(L"from\\a.txt"));
    ASSERT_EQ(::SHQueryRecycleBinW(nullptr, &after), S_OK);
    EXPECT_EQ(after.i64NumItems, before.i64NumItems + 1);
}

}  // namespace
}  // namespace tovar::test
