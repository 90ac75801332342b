// The extraction dialog by its controls, over a driver of the test's own and the real folders.

#include "browser/win32/unpack_dialog.h"

#include <gtest/gtest.h>

#include <ole2.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "browser/fakes/fake_driver.h"
#include "browser/win32/windows_progress_dialogs.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/folder_dialog_controls.h"
#include "shell/win32/handles.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/pending_messages.h"
#include "shell/win32/regional_settings.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "win32/extraction/support/dialog_user.h"
#include "win32/shell/temporary_folder.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

struct Pump final : MessagePump {
    void processPending() override { runPendingMessages(); }
};

class UnpackDialog : public testing::Test {
protected:
    UnpackDialog() {
        ::OleInitialize(nullptr);
        workFolder.resetToTempFolder();
        driver.columns = {};
        fs::create_directory(folder / L"target, with blanks");
    }
    ~UnpackDialog() override { ::OleUninitialize(); }

    /// Shows the dialog and lets its user act; ends by OK or Cancel.
    /// @return the target folder
    std::wstring show(const std::function<void(const UnpackControls&)>& use, const std::wstring& files = L"",
                      const std::wstring& start = {}) {
        const UnpackJob job{owner.get(), driver, archive, extraction, workFolder, paths, disk, messages};
        const UnpackDialogUser user([&](HWND window) { use({window}); });
        const std::wstring chosen = dialogs.show(job, start.empty() ? target : start, files, fontName);
        EXPECT_EQ(user.times(), 1);
        return chosen;
    }
    static std::wstring focusedText() { return textOf(::GetFocus()); }
    static RECT placeOf(HWND window) {
        RECT place{};
        ::GetWindowRect(window, &place);
        return place;
    }

    const TemporaryFolder folder;
    const std::wstring target = folder / L"target, with blanks";
    WindowsFileSystem disk;
    WindowsSystemPaths systemPaths;
    WindowsSystemInformation information;
    FakeMessageBoxes messages;
    PathOperations paths{disk, systemPaths, information, messages};
    WorkFolder workFolder{paths, disk, systemPaths};
    Pump pump;
    const RegionalSettings regional = loadRegionalSettings();
    WindowsProgressDialogs progress{regional, [] { return std::wstring(); }};
    Extraction extraction{messages, pump, progress};
    FakeDriver driver;
    std::wstring archive = LR"(C:\some folder\some archive.zip)";
    std::wstring fontName;
    UniqueWindow owner{::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900, 700,
                                         nullptr, nullptr, nullptr, nullptr)};
    WindowsUnpackDialogs dialogs;
};

TEST_F(UnpackDialog, ComesUpReadyToStart) {
    show([&](const UnpackControls& dialog) {
        EXPECT_EQ(textOf(dialog.dialog), LR"(Extract files in C:\some folder\some archive.zip)");
        EXPECT_EQ(dialog.text(IDC_LBL_FOLDER), target);
        EXPECT_TRUE(dialog.isEnabled(IDOK));
        EXPECT_TRUE(dialog.isEnabled(IDC_CMD_NEW_FOLDER));
        EXPECT_TRUE(dialog.isEnabled(IDC_CHK_OPT));
        EXPECT_FALSE(dialog.isChecked(IDC_CHK_OPT));
        EXPECT_TRUE(dialog.isChecked(IDC_CHK_OPT_KEEP_FOLDERS));
        EXPECT_TRUE(dialog.isChecked(IDC_OPT_EXTRACT_ALL));
        EXPECT_FALSE(dialog.isEnabled(IDC_OPT_EXTRACT));
        EXPECT_FALSE(dialog.isEnabled(IDC_TXT_EXTENSION));
        EXPECT_EQ(::GetNextDlgTabItem(dialog.dialog, nullptr, FALSE), dialog.item(IDOK)) << "the first tab position";
        EXPECT_EQ(::GetFocus(), dialog.item(IDOK));
        EXPECT_FALSE(::IsWindowEnabled(owner.get()));
        dialog.press(IDCANCEL);
    });
    EXPECT_TRUE(driver.extracted.empty());
    EXPECT_TRUE(::IsWindowEnabled(owner.get()));
}

TEST_F(UnpackDialog, TellsWhatWasChosen) {
    const std::wstring chosen = show(
        [&](const UnpackControls& dialog) {
            EXPECT_TRUE(dialog.isChecked(IDC_OPT_EXTRACT));
            dialog.choose(2);
            EXPECT_TRUE(dialog.isEnabled(IDC_TXT_EXTENSION));
            dialog.type(L" a b*.txt");
            dialog.press(IDOK);
        },
        L"x\r\n");
    EXPECT_EQ(chosen, target);
    ASSERT_EQ(driver.extracted.size(), 1U);
    EXPECT_EQ(driver.extracted[0].owner, owner.get());
    EXPECT_EQ(driver.extracted[0].archive, archive);
    EXPECT_EQ(driver.extracted[0].folder, target);
    EXPECT_EQ(driver.extracted[0].members, L" a b*.txt");
}

TEST_F(UnpackDialog, EnablesThePatternWithItsOption) {
    show(
        [&](const UnpackControls& dialog) {
            EXPECT_FALSE(dialog.isEnabled(IDC_TXT_EXTENSION));
            dialog.choose(2);
            EXPECT_TRUE(dialog.isEnabled(IDC_TXT_EXTENSION));
            dialog.choose(1);
            EXPECT_FALSE(dialog.isEnabled(IDC_TXT_EXTENSION));
            dialog.choose(0);
            EXPECT_FALSE(dialog.isEnabled(IDC_TXT_EXTENSION));
            dialog.press(IDCANCEL);
        },
        L"x\r\n");
}

TEST_F(UnpackDialog, MakesAFolderAndGoesThere) {
    const DialogUser<IDC_TXT_NAME> namer([](HWND dialog) {
        ::SetDlgItemTextW(dialog, IDC_TXT_NAME, L"made, here");
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    const std::wstring chosen = show([&](const UnpackControls& dialog) {
        dialog.click(IDC_CMD_NEW_FOLDER);
        EXPECT_EQ(dialog.text(IDC_LBL_FOLDER), target + L"\\made, here");
        EXPECT_TRUE(dialog.isEnabled(IDOK));
        dialog.press(IDOK);
    });
    EXPECT_TRUE(fs::is_directory(target + L"\\made, here"));
    EXPECT_EQ(chosen, target + L"\\made, here");
    ASSERT_EQ(driver.extracted.size(), 1U);
    EXPECT_EQ(driver.extracted[0].folder, target + L"\\made, here");
}

TEST_F(UnpackDialog, AllowsNothingOutsideTheFileSystem) {
    show([&](const UnpackControls& dialog) {
        const HWND tree = ::FindWindowExW(dialog.item(IDC_WEN_FOLDER_TREE_VIEW1), nullptr, L"SysTreeView32", nullptr);
        ASSERT_NE(tree, nullptr);
        // The computer itself holds the drives, and is no folder.
        const LPARAM folderItem = ::SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0);
        LPARAM drive = folderItem;
        for (LPARAM above; (above = ::SendMessageW(tree, TVM_GETNEXTITEM, TVGN_PARENT, drive)) != 0;) {
            ::SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, above);
            drive = above;
            if (!dialog.isEnabled(IDOK)) break;
        }
        EXPECT_FALSE(dialog.isEnabled(IDOK));
        EXPECT_FALSE(dialog.isEnabled(IDC_CMD_NEW_FOLDER));
        ::SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, folderItem);
        EXPECT_TRUE(dialog.isEnabled(IDOK));
        EXPECT_EQ(dialog.text(IDC_LBL_FOLDER), target);
        dialog.press(IDCANCEL);
    });
}

TEST_F(UnpackDialog, StaysWhenItsFolderHasVanished) {
    bool told = false;
    show([&](const UnpackControls& dialog) {
        fs::remove(target);
        dialog.click(IDOK);
        told = !messages.shown.empty();
        EXPECT_TRUE(::IsWindowVisible(dialog.dialog));
        dialog.press(IDCANCEL);
    });
    EXPECT_TRUE(told);
    EXPECT_TRUE(driver.extracted.empty());
}

TEST_F(UnpackDialog, TakesAFolderWhosePathIsLongerThanOthersAllow) {
    std::wstring deep = target;
    for (int depth = 0; depth < 5; ++depth) {
        deep += L'\\' + std::wstring(60, static_cast<wchar_t>(L'a' + depth));
        ASSERT_NE(::CreateDirectoryW(extendedPath(deep).c_str(), nullptr), FALSE);
    }
    const std::wstring chosen = show(
        [&](const UnpackControls& dialog) {
            EXPECT_EQ(dialog.text(IDC_LBL_FOLDER), deep);
            EXPECT_TRUE(dialog.isEnabled(IDOK));
            dialog.press(IDOK);
        },
        L"", deep);
    EXPECT_EQ(chosen, deep);
    ASSERT_EQ(driver.extracted.size(), 1U);
    EXPECT_EQ(driver.extracted[0].folder, deep);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnpackDialog, WaitsForTheUserWhenItsFirstFolderIsNotThere) {
    show(
        [&](const UnpackControls& dialog) {
            EXPECT_EQ(dialog.text(IDC_LBL_FOLDER), folder.path()) << "the nearest one that is there";
            dialog.press(IDCANCEL);
        },
        L"", folder / L"none\\at all");
}

TEST_F(UnpackDialog, GrowsWithItsTree) {
    show([&](const UnpackControls& dialog) {
        const RECT before = placeOf(dialog.dialog), tree = placeOf(dialog.item(IDC_WEN_FOLDER_TREE_VIEW1));
        const RECT ok = placeOf(dialog.item(IDOK)), option = placeOf(dialog.item(IDC_CHK_OPT));
        ::SetWindowPos(dialog.dialog, nullptr, before.left, before.top, before.right - before.left + 100,
                       before.bottom - before.top + 60, SWP_NOZORDER);
        const RECT grown = placeOf(dialog.item(IDC_WEN_FOLDER_TREE_VIEW1));
        EXPECT_EQ(grown.right - grown.left, tree.right - tree.left + 100);
        EXPECT_EQ(grown.bottom - grown.top, tree.bottom - tree.top + 60);
        const RECT moved = placeOf(dialog.item(IDOK));
        EXPECT_EQ(moved.left, ok.left + 100);
        EXPECT_EQ(moved.top, ok.top + 60);
        EXPECT_EQ(moved.right - moved.left, ok.right - ok.left);
        const RECT aside = placeOf(dialog.item(IDC_CHK_OPT));
        EXPECT_EQ(aside.left, option.left + 100);
        EXPECT_EQ(aside.top, option.top);
        MINMAXINFO limits{};
        ::SendMessageW(dialog.dialog, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
        EXPECT_EQ(limits.ptMinTrackSize.x, before.right - before.left);
        EXPECT_EQ(limits.ptMinTrackSize.y, before.bottom - before.top);
        dialog.press(IDCANCEL);
    });
}

TEST_F(UnpackDialog, HasAnAccessKeyOfItsOwnForEachControl) {
    show([&](const UnpackControls& dialog) {
        std::vector<wchar_t> keys;
        for (HWND control = ::GetWindow(dialog.dialog, GW_CHILD); control != nullptr;
             control = ::GetWindow(control, GW_HWNDNEXT)) {
            const std::wstring text = textOf(control);
            const std::size_t mark = text.find(L'&');
            if (mark != text.npos) keys.push_back(text.at(mark + 1));
        }
        EXPECT_EQ(keys.size(), 8U);
        std::ranges::sort(keys);
        EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end());
        // What names a control for the keyboard and for screen readers stands before it.
        EXPECT_EQ(::GetWindow(dialog.item(IDC_WEN_FOLDER_TREE_VIEW1), GW_HWNDPREV), dialog.item(IDC_LBL_TREE));
        EXPECT_EQ(::GetWindow(dialog.item(IDC_TXT_EXTENSION), GW_HWNDPREV), dialog.item(IDC_LBL_PATTERN));
        dialog.press(IDCANCEL);
    });
}

TEST_F(UnpackDialog, CutsLongTextsInsteadOfItsLayout) {
    archive = LR"(C:\)" + std::wstring(200, L'a') + LR"(\)" + std::wstring(200, L'b') + L".zip";
    show([&](const UnpackControls& dialog) {
        RECT client{};
        ::GetClientRect(dialog.dialog, &client);
        for (HWND control = ::GetWindow(dialog.dialog, GW_CHILD); control != nullptr;
             control = ::GetWindow(control, GW_HWNDNEXT)) {
            RECT place = placeOf(control);
            ::MapWindowPoints(nullptr, dialog.dialog, reinterpret_cast<POINT*>(&place), 2);
            EXPECT_GE(place.left, 0);
            EXPECT_LE(place.right, client.right) << textOf(control);
            EXPECT_LE(place.bottom, client.bottom) << textOf(control);
        }
        dialog.press(IDCANCEL);
    });
}

TEST_F(UnpackDialog, StaysOnTheScreenOfAHostInItsCorner) {
    ::SetWindowPos(owner.get(), nullptr, -400, -300, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    show([&](const UnpackControls& dialog) {
        RECT screen{};
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
        const RECT place = placeOf(dialog.dialog);
        EXPECT_GE(place.left, screen.left);
        EXPECT_GE(place.top, screen.top);
        EXPECT_LE(place.right, screen.right);
        EXPECT_LE(place.bottom, screen.bottom);
        dialog.press(IDCANCEL);
    });
}

TEST_F(UnpackDialog, ClosesWithWhatItHasOpened) {
    bool closed = false;
    const DialogUser<IDC_TXT_NAME> namer([&](HWND) {
        closed = true;
        dialogs.closeAll();
    });
    show([](const UnpackControls& dialog) { dialog.click(IDC_CMD_NEW_FOLDER); });
    EXPECT_TRUE(closed);
    EXPECT_TRUE(driver.extracted.empty());
    EXPECT_TRUE(::IsWindowEnabled(owner.get()));
}

TEST_F(UnpackDialog, TakesTheHostsFont) {
    fontName = L"Courier New";
    show([&](const UnpackControls& dialog) {
        LOGFONTW font{};
        const auto handle = reinterpret_cast<HFONT>(::SendMessageW(dialog.item(IDC_OPT_EXTRACT), WM_GETFONT, 0, 0));
        ASSERT_NE(::GetObjectW(handle, sizeof font, &font), 0);
        EXPECT_STREQ(font.lfFaceName, L"Courier New");
        dialog.press(IDCANCEL);
    });
}

}  // namespace
}  // namespace tovar::test
