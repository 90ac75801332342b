#include "shell/win32/confirmation_dialog.h"

#include <stdexcept>

#include "shell/win32/confirmation_dialog_controls.h"
#include "win32/folders/dialog_driver.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr const wchar_t* kTitle = L"TovarEx";

HWND item(HWND dialog, int id) { return ::GetDlgItem(dialog, id); }
std::wstring itemText(HWND dialog, int id) { return textOf(item(dialog, id)); }
bool isShown(HWND dialog, int id) { return (::GetWindowLongPtrW(item(dialog, id), GWL_STYLE) & WS_VISIBLE) != 0; }

class ConfirmationDialogTest : public testing::Test {
protected:
    bool ask(const Confirmation& confirmation) {
        WindowsConfirmations confirmations(L"");
        return confirmations.ask(nullptr, confirmation,
                                 [this](WindowHandle window) { work(static_cast<HWND>(window)); });
    }
    void work(HWND window) {
        ++worked_;
        if (whileWorking_) whileWorking_(window);
    }

    DialogDriver driver_;
    int worked_ = 0;
    std::function<void(HWND)> whileWorking_;
};

TEST_F(ConfirmationDialogTest, ShowsTheTextsAndWorksAfterYes) {
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(itemText(dialog, IDC_LBL_QUESTION), L"Extract following files and folders ?");
        EXPECT_EQ(itemText(dialog, IDC_TXT_LIST), L"a & b.txt\r\nfolder/*.*\r\n");
        EXPECT_EQ(itemText(dialog, IDC_LBL_NOTE), L"If files already exist, they will be overwritten.");
        EXPECT_EQ(itemText(dialog, IDYES), L"&Yes");
        EXPECT_EQ(itemText(dialog, IDCANCEL), L"&No");
        EXPECT_FALSE(isShown(dialog, IDC_PRG_WORK));
        EXPECT_NE(::SendMessageW(item(dialog, IDC_IMG_QUESTION), STM_GETICON, 0, 0), 0);
        EXPECT_EQ(::GetFocus(), item(dialog, IDYES));
        click(dialog, IDYES);
    });
    whileWorking_ = [](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Extracting...");
        EXPECT_TRUE(isShown(dialog, IDC_PRG_WORK));
        EXPECT_FALSE(::IsWindowEnabled(item(dialog, IDYES)));
        EXPECT_FALSE(::IsWindowEnabled(item(dialog, IDCANCEL)));
        // It cannot be left while the work runs.
        ::SendMessageW(dialog, WM_CLOSE, 0, 0);
        ::SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        ::SendMessageW(dialog, WM_COMMAND, IDYES, 0);
        EXPECT_TRUE(::IsWindowVisible(dialog));
    };
    EXPECT_TRUE(ask(confirmExtraction(L"a & b.txt\r\nfolder/*.*\r\n")));
    EXPECT_EQ(worked_, 1);
}

TEST_F(ConfirmationDialogTest, DoesNothingAfterNo) {
    driver_.then(kTitle, [](HWND dialog) { click(dialog, IDCANCEL); });
    EXPECT_FALSE(ask(confirmDeletion(L"a.txt\r\n")));
    EXPECT_EQ(worked_, 0);
}

TEST_F(ConfirmationDialogTest, TakesEscapeAndTheCloseBoxForNo) {
    driver_.then(kTitle, [](HWND dialog) { ::PostMessageW(item(dialog, IDYES), WM_KEYDOWN, VK_ESCAPE, 0x00010001); });
    EXPECT_FALSE(ask(confirmCompression(1)));
    driver_.then(kTitle, [](HWND dialog) { ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); });
    EXPECT_FALSE(ask(confirmCompression(1)));
    EXPECT_EQ(worked_, 0);
}

TEST_F(ConfirmationDialogTest, TakesEnterForYes) {
    driver_.then(kTitle, [](HWND dialog) { pressEnter(item(dialog, IDYES)); });
    EXPECT_TRUE(ask(confirmDeletion(L"a.txt\r\n")));
    EXPECT_EQ(worked_, 1);
}

TEST_F(ConfirmationDialogTest, IsLowerWithoutAList) {
    int withList = 0, withoutList = 0;
    driver_.then(kTitle, [&](HWND dialog) {
        withList = placeOf(dialog).bottom - placeOf(dialog).top;
        click(dialog, IDCANCEL);
    });
    ask(confirmExtraction(L"a.txt\r\n"));
    driver_.then(kTitle, [&](HWND dialog) {
        withoutList = placeOf(dialog).bottom - placeOf(dialog).top;
        EXPECT_FALSE(isShown(dialog, IDC_TXT_LIST));
        EXPECT_EQ(itemText(dialog, IDC_LBL_QUESTION), L"Compress 3 files and folders ?");
        EXPECT_GE(placeOf(item(dialog, IDC_LBL_NOTE)).top, placeOf(item(dialog, IDC_LBL_QUESTION)).bottom);
        EXPECT_GT(placeOf(item(dialog, IDYES)).top, placeOf(item(dialog, IDC_LBL_NOTE)).bottom);
        EXPECT_LT(placeOf(item(dialog, IDYES)).bottom, placeOf(dialog).bottom);
        click(dialog, IDCANCEL);
    });
    ask(confirmCompression(3));
    EXPECT_LT(withoutList, withList - 50);
}

TEST_F(ConfirmationDialogTest, ScrollsALongList) {
    std::wstring list;
    for (int number = 0; number < 5000; ++number) list += L"folder/member " + std::to_wstring(number) + L".txt\r\n";
    list += L"last/" + std::wstring(300, L'n') + L"\r\n";
    driver_.then(kTitle, [&](HWND dialog) {
        const HWND shown = item(dialog, IDC_TXT_LIST);
        EXPECT_EQ(textOf(shown), list);
        EXPECT_EQ(::SendMessageW(shown, EM_GETLINECOUNT, 0, 0), 5002);
        EXPECT_EQ(::SendMessageW(shown, EM_GETFIRSTVISIBLELINE, 0, 0), 0);
        ::SendMessageW(shown, WM_VSCROLL, SB_BOTTOM, 0);
        EXPECT_GT(::SendMessageW(shown, EM_GETFIRSTVISIBLELINE, 0, 0), 4900);
        // It can be read only.
        ::SendMessageW(shown, WM_CHAR, L'x', 0);
        EXPECT_EQ(textOf(shown), list);
        click(dialog, IDCANCEL);
    });
    EXPECT_FALSE(ask(confirmDeletion(list)));
}

TEST_F(ConfirmationDialogTest, ReachesTheListWithTheTabKeyBehindTheAnswers) {
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(::GetNextDlgTabItem(dialog, item(dialog, IDYES), FALSE), item(dialog, IDCANCEL));
        EXPECT_EQ(::GetNextDlgTabItem(dialog, item(dialog, IDCANCEL), FALSE), item(dialog, IDC_TXT_LIST));
        // What stands right before it names it.
        EXPECT_EQ(::GetWindow(item(dialog, IDC_TXT_LIST), GW_HWNDPREV), item(dialog, IDC_LBL_QUESTION));
        click(dialog, IDCANCEL);
    });
    ask(confirmDeletion(L"a.txt\r\n"));
}

TEST_F(ConfirmationDialogTest, ClosesBeforeItTellsOfAFailure) {
    driver_.then(kTitle, [](HWND dialog) { click(dialog, IDYES); });
    HWND shown = nullptr;
    whileWorking_ = [&](HWND dialog) {
        shown = dialog;
        throw std::runtime_error("full");
    };
    EXPECT_THROW(ask(confirmDeletion(L"a.txt\r\n")), std::runtime_error);
    EXPECT_FALSE(::IsWindow(shown));
}

TEST_F(ConfirmationDialogTest, HasTheHostsFont) {
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(faceOf(item(dialog, IDC_TXT_LIST)), L"Courier New");
        EXPECT_EQ(faceOf(item(dialog, IDYES)), L"Courier New");
        click(dialog, IDCANCEL);
    });
    EXPECT_FALSE(WindowsConfirmations(L"Courier New").ask(nullptr, confirmCompression(2), nullptr));
}

}  // namespace
}  // namespace tovar::test
