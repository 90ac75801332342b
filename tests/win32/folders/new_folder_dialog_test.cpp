#include "shell/win32/new_folder_dialog.h"

#include "shell/fakes/fake_message_boxes.h"
#include "shell/path_operations.h"
#include "shell/win32/folder_dialog_controls.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "win32/folders/dialog_driver.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr const wchar_t* kTitle = L"New Folder";
constexpr int kMessageText = 0xFFFF, kMessageIcon = 1088;

void type(HWND dialog, const wchar_t* text) { ::SetDlgItemTextW(dialog, IDC_TXT_NAME, text); }
bool isOkEnabled(HWND dialog) { return ::IsWindowEnabled(::GetDlgItem(dialog, IDOK)) != FALSE; }

class NewFolderDialogTest : public testing::Test {
protected:
    DialogDriver driver_;
    fNewFolder dialog_{nullptr, L""};
};

TEST_F(NewFolderDialogTest, AnswersTheNameThatWasTyped) {
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(textOf(::GetDlgItem(dialog, IDC_TXT_NAME)), L"");
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog, IDC_TXT_NAME));
        EXPECT_FALSE(isOkEnabled(dialog));
        type(dialog, L"my folder");
        EXPECT_TRUE(isOkEnabled(dialog));
        type(dialog, L"");
        EXPECT_FALSE(isOkEnabled(dialog));
        type(dialog, L"a*b \x65E5");
        click(dialog, IDOK);
    });
    EXPECT_EQ(dialog_.ask(), L"a*b \x65E5");
    EXPECT_EQ(dialog_.NewFolder(), L"a*b \x65E5");
}

TEST_F(NewFolderDialogTest, AnswersNothingWhenItIsCancelled) {
    driver_.then(kTitle, [](HWND dialog) {
        type(dialog, L"a");
        click(dialog, IDCANCEL);
    });
    EXPECT_EQ(dialog_.ask(), L"");
}

TEST_F(NewFolderDialogTest, AnswersNothingWhenItIsClosed) {
    driver_.then(kTitle, [](HWND dialog) {
        type(dialog, L"a");
        ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(dialog_.ask(), L"");
}

TEST_F(NewFolderDialogTest, TakesEnterForOk) {
    driver_.then(kTitle, [](HWND dialog) {
        type(dialog, L"entered");
        pressEnter(::GetDlgItem(dialog, IDC_TXT_NAME));
    });
    EXPECT_EQ(dialog_.ask(), L"entered");
}

TEST_F(NewFolderDialogTest, DoesNothingOnEnterWithoutAName) {
    driver_.then(kTitle, [](HWND dialog) { pressEnter(::GetDlgItem(dialog, IDC_TXT_NAME)); });
    driver_.then(kTitle, [](HWND dialog) { ::SendMessageW(dialog, WM_COMMAND, IDOK, 0); });
    driver_.then(kTitle, [](HWND dialog) {
        type(dialog, L"later");
        click(dialog, IDOK);
    });
    EXPECT_EQ(dialog_.ask(), L"later");
}

TEST_F(NewFolderDialogTest, RejectsAnImpossibleNameWithAMessage) {
    driver_.then(kTitle, [](HWND dialog) {
        type(dialog, L"it's");
        click(dialog, IDOK);
    });
    driver_.then(L"TovarEx", [](HWND message) {
        EXPECT_EQ(textOf(::GetDlgItem(message, kMessageText)), L"New folder 'it's' is impossible.");
        EXPECT_NE(::SendDlgItemMessageW(message, kMessageIcon, STM_GETICON, 0, 0), 0);
        EXPECT_NE(::GetDlgItem(message, IDOK), nullptr);
        EXPECT_NE(::GetDlgItem(message, IDCANCEL), nullptr);
        SIZE ideal{};  // BCM_GETIDEALSIZE: only version 6 of the controls answers it
        EXPECT_NE(::SendDlgItemMessageW(message, IDOK, 0x1601, 0, reinterpret_cast<LPARAM>(&ideal)), FALSE);
        click(message, IDOK);
    });
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(textOf(::GetDlgItem(dialog, IDC_TXT_NAME)), L"it's");
        EXPECT_TRUE(isOkEnabled(dialog));
        click(dialog, IDCANCEL);
    });
    EXPECT_EQ(dialog_.ask(), L"");
}

TEST_F(NewFolderDialogTest, GivesTheNameTheFocusWheneverItIsActivated) {
    driver_.then(kTitle, [](HWND dialog) {
        ::SetFocus(::GetDlgItem(dialog, IDCANCEL));
        ::SendMessageW(dialog, WM_ACTIVATE, WA_ACTIVE, 0);
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog, IDC_TXT_NAME));
        click(dialog, IDCANCEL);
    });
    dialog_.ask();
}

TEST(NewFolderDialog, HasTheHostsFontAndStandsOverItsOwner) {
    const TestWindow owner = makeWindow(L"STATIC", WS_OVERLAPPEDWINDOW | WS_VISIBLE, nullptr, 800, 600);
    DialogDriver driver;
    fNewFolder dialog(owner.get(), L"Courier New");
    driver.then(kTitle, [&](HWND window) {
        EXPECT_EQ(faceOf(::GetDlgItem(window, IDC_TXT_NAME)), L"Courier New");
        EXPECT_EQ(faceOf(::GetDlgItem(window, IDOK)), L"Courier New");
        const RECT own = placeOf(window), around = placeOf(owner.get());
        EXPECT_NEAR(own.left - around.left, around.right - own.right, 1);
        EXPECT_NEAR(own.top - around.top, around.bottom - own.bottom, 1);
        EXPECT_FALSE(::IsWindowEnabled(owner.get()));
        click(window, IDCANCEL);
    });
    dialog.ask();
    EXPECT_TRUE(::IsWindowEnabled(owner.get()));
}

TEST(NewFolderDialog, MakesAFolderOnTheDisk) {
    const TemporaryFolder room;
    WindowsFileSystem files;
    WindowsSystemPaths systemPaths;
    WindowsSystemInformation information;
    FakeMessageBoxes messages;
    PathOperations paths(files, systemPaths, information, messages);
    DialogDriver driver;
    driver.then(kTitle, [](HWND dialog) {
        type(dialog, L"made");
        click(dialog, IDOK);
    });
    fNewFolder dialog(nullptr, L"");
    std::wstring parent = room.path();
    EXPECT_EQ(PromptNewFolder(parent, dialog, paths), L"made");
    EXPECT_EQ(parent, room.path() + L'\\');
    EXPECT_TRUE(paths.IsFolder(room / L"made"));
    EXPECT_TRUE(messages.shown.empty());
}

}  // namespace
}  // namespace tovar::test
