#include "shell/win32/select_dialog.h"

#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/folder_dialog_controls.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "win32/folders/dialog_driver.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr const wchar_t* kTitle = L"Select Folder";

HWND browserOf(HWND dialog) { return ::GetDlgItem(dialog, IDC_WEN_FOLDER_BROWSER); }
HWND treeOf(HWND dialog) {
    const HWND part = ::FindWindowExW(browserOf(dialog), nullptr, L"WenFolderTreeView", nullptr);
    return ::FindWindowExW(part, nullptr, WC_TREEVIEWW, nullptr);
}
HWND listOf(HWND dialog) { return ::FindWindowExW(browserOf(dialog), nullptr, WC_LISTVIEWW, nullptr); }
bool isOkEnabled(HWND dialog) { return ::IsWindowEnabled(::GetDlgItem(dialog, IDOK)) != FALSE; }

std::wstring rowText(HWND list, int row) {
    std::wstring text(300, L'\0');
    LVITEMW item{};
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    ::SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}
Texts rowsOf(HWND list) {
    Texts rows;
    const int count = static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) rows.push_back(rowText(list, row));
    return rows;
}
void selectRow(HWND list, int row) {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED;
    ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

class SelectDialog : public testing::Test {
protected:
    SelectDialog() {
        EXPECT_TRUE(makeFolder(room_ / L"inside"));
        EXPECT_TRUE(makeFile(room_ / L"one.txt"));
        EXPECT_TRUE(makeFile(room_ / L"two.txt"));
    }

    TemporaryFolder room_;
    WindowsFileSystem files_;
    WindowsSystemPaths systemPaths_;
    WindowsSystemInformation information_;
    FakeMessageBoxes messages_;
    PathOperations paths_{files_, systemPaths_, information_, messages_};
    DialogDriver driver_;
    fSelect dialog_{nullptr, L"", paths_};
};

TEST_F(SelectDialog, BeginsAtDriveC) {
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_TRUE(isOkEnabled(dialog));
        const ShownTree tree(treeOf(dialog));
        EXPECT_NE(tree.text(tree.caret()).find(L"C:"), std::wstring::npos);
        click(dialog, IDOK);
    });
    dialog_.show();
    EXPECT_FALSE(dialog_.Canceled());
    EXPECT_EQ(dialog_.Folder(), LR"(C:\)");
    EXPECT_EQ(dialog_.FileList(), L"");
}

TEST_F(SelectDialog, AnswersTheFolderAndTheNames) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(rowsOf(listOf(dialog)), (Texts{L"inside", L"one.txt", L"two.txt"}));
        selectRow(listOf(dialog), 0);
        selectRow(listOf(dialog), 2);
        click(dialog, IDOK);
    });
    dialog_.show();
    EXPECT_FALSE(dialog_.Canceled());
    EXPECT_EQ(dialog_.Folder(), room_.path());
    EXPECT_EQ(dialog_.FileList(), L"inside\r\ntwo.txt");
}

TEST_F(SelectDialog, DropsTheNameOfAFileThatHasGone) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [this](HWND dialog) {
        selectRow(listOf(dialog), 1);
        selectRow(listOf(dialog), 2);
        ASSERT_TRUE(::DeleteFileW((room_ / L"one.txt").c_str()));
        ::SendMessageW(::GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    });
    dialog_.show();
    EXPECT_EQ(dialog_.FileList(), L"two.txt");
}

TEST_F(SelectDialog, IsCanceled) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [](HWND dialog) { click(dialog, IDCANCEL); });
    dialog_.show();
    EXPECT_TRUE(dialog_.Canceled());
}

TEST_F(SelectDialog, DisablesOkWhereThereIsNoFolder) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [](HWND dialog) {
        const ShownTree tree(treeOf(dialog));
        EXPECT_TRUE(isOkEnabled(dialog));
        const HTREEITEM computer = tree.in(tree.root(), ShellFolderSource().computer().name);
        tree.select(computer);
        EXPECT_FALSE(isOkEnabled(dialog));
        EXPECT_TRUE(rowsOf(listOf(dialog)).empty());
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        EXPECT_TRUE(::IsWindow(dialog));
        click(dialog, IDCANCEL);
    });
    dialog_.show();
    EXPECT_TRUE(dialog_.Canceled());
}

TEST_F(SelectDialog, OpensAFolderOfTheList) {
    ASSERT_TRUE(makeFile(room_ / LR"(inside\deep.txt)"));
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [](HWND dialog) {
        RECT place{LVIR_BOUNDS, 0, 0, 0};
        ::SendMessageW(listOf(dialog), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&place));
        const LPARAM at = MAKELPARAM(place.left + 20, (place.top + place.bottom) / 2);
        ::PostMessageW(listOf(dialog), WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::PostMessageW(listOf(dialog), WM_LBUTTONUP, 0, at);
        ::PostMessageW(listOf(dialog), WM_LBUTTONDBLCLK, MK_LBUTTON, at);
        ::PostMessageW(listOf(dialog), WM_LBUTTONUP, 0, at);
        EXPECT_TRUE(waitUntil([&] { return rowsOf(listOf(dialog)) == Texts{L"deep.txt"}; }));
        click(dialog, IDOK);
    });
    dialog_.show();
    EXPECT_EQ(dialog_.Folder(), room_ / L"inside");
}

TEST_F(SelectDialog, FollowsWhatHappensOnTheDisk) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [this](HWND dialog) {
        selectRow(listOf(dialog), 2);
        ASSERT_TRUE(makeFile(room_ / L"a.txt"));
        EXPECT_TRUE(waitUntil([&] {
            return rowsOf(listOf(dialog)) == Texts{L"inside", L"a.txt", L"one.txt", L"two.txt"};
        }));
        click(dialog, IDOK);
    });
    dialog_.show();
    EXPECT_EQ(dialog_.FileList(), L"two.txt");
}

TEST_F(SelectDialog, FollowsItsSize) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [](HWND dialog) {
        const RECT ok = placeOf(::GetDlgItem(dialog, IDOK)), browser = placeOf(browserOf(dialog));
        const RECT own = placeOf(dialog), tree = placeOf(treeOf(dialog)), list = placeOf(listOf(dialog));
        ::SetWindowPos(dialog, nullptr, 0, 0, own.right - own.left + 100, own.bottom - own.top + 60,
                       SWP_NOMOVE | SWP_NOZORDER);
        const RECT okNow = placeOf(::GetDlgItem(dialog, IDOK)), browserNow = placeOf(browserOf(dialog));
        EXPECT_EQ(okNow.right - okNow.left, ok.right - ok.left);
        EXPECT_EQ(okNow.bottom - okNow.top, ok.bottom - ok.top);
        EXPECT_EQ(okNow.top - ok.top, 60);
        EXPECT_EQ(browserNow.right - browser.right, 100);
        EXPECT_EQ(browserNow.bottom - browser.bottom, 60);
        EXPECT_EQ(placeOf(treeOf(dialog)).bottom - tree.bottom, 60);
        EXPECT_EQ(placeOf(listOf(dialog)).right - list.right, 100);
        EXPECT_EQ(placeOf(listOf(dialog)).bottom - list.bottom, 60);
        EXPECT_LT(placeOf(treeOf(dialog)).right, placeOf(listOf(dialog)).left);
        click(dialog, IDCANCEL);
    });
    dialog_.show();
}

TEST_F(SelectDialog, GoesFromTheTreeToTheListToTheButtonsWithTheTabKey) {
    dialog_.setFolder(room_.path());
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_EQ(::GetNextDlgTabItem(dialog, treeOf(dialog), FALSE), listOf(dialog));
        EXPECT_EQ(::GetNextDlgTabItem(dialog, listOf(dialog), FALSE), ::GetDlgItem(dialog, IDOK));
        EXPECT_EQ(::GetNextDlgTabItem(dialog, ::GetDlgItem(dialog, IDCANCEL), FALSE), treeOf(dialog));
        EXPECT_EQ(::GetFocus(), treeOf(dialog));
        EXPECT_EQ(textOf(listOf(dialog)), L"Files");
        click(dialog, IDCANCEL);
    });
    dialog_.show();
}

TEST_F(SelectDialog, HasTheHostsFont) {
    fSelect dialog(nullptr, L"Courier New", paths_);
    driver_.then(kTitle, [](HWND window) {
        EXPECT_EQ(faceOf(treeOf(window)), L"Courier New");
        EXPECT_EQ(faceOf(listOf(window)), L"Courier New");
        EXPECT_EQ(faceOf(::GetDlgItem(window, IDOK)), L"Courier New");
        click(window, IDCANCEL);
    });
    dialog.show();
}

TEST_F(SelectDialog, CanBeShownAgain) {
    for (int time = 0; time < 2; ++time) {
        dialog_.setFolder(room_ / L"inside");
        driver_.then(kTitle, [](HWND dialog) { click(dialog, IDOK); });
        dialog_.show();
        EXPECT_EQ(dialog_.Folder(), room_ / L"inside");
    }
}

TEST_F(SelectDialog, BeginsAboveAFolderThatIsMissing) {
    dialog_.setFolder(room_ / LR"(missing\deep)");
    driver_.then(kTitle, [](HWND dialog) { click(dialog, IDOK); });
    dialog_.show();
    EXPECT_EQ(dialog_.Folder(), room_.path());
}

TEST_F(SelectDialog, PicksAFolderBeyond260Characters) {
    std::wstring deep = room_.path();
    while (deep.size() < 400) {
        deep += L'\\' + std::wstring(60, L'd');
        ASSERT_TRUE(makeFolder(deep));
    }
    ASSERT_TRUE(makeFile(deep + LR"(\deep.txt)"));
    dialog_.setFolder(deep);
    driver_.then(kTitle, [](HWND dialog) {
        EXPECT_TRUE(isOkEnabled(dialog));
        EXPECT_EQ(rowsOf(listOf(dialog)), Texts{L"deep.txt"});
        selectRow(listOf(dialog), 0);
        click(dialog, IDOK);
    });
    dialog_.show();
    EXPECT_EQ(dialog_.Folder(), deep);
    EXPECT_EQ(dialog_.FileList(), L"deep.txt");
    ASSERT_TRUE(::DeleteFileW(extended(deep + LR"(\deep.txt)").c_str()));
    for (; deep != room_.path(); deep.resize(deep.rfind(L'\\'))) {
        EXPECT_TRUE(::RemoveDirectoryW(extended(deep).c_str()));
    }
}

}  // namespace
}  // namespace tovar::test
