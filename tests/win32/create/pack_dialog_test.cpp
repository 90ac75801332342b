// The dialogs for creating archives by their controls, over a library of the test's own.

#include "create/win32/pack_dialog.h"

#include <dlgs.h>

#include "create/fakes/pack_fixture.h"
#include "create/win32/comment_dialog.h"
#include "create/win32/messages_dialog.h"
#include "shell/win32/handles.h"
#include "win32/create/pack_controls.h"

namespace tovar::test {
namespace {

using Names = std::vector<std::wstring>;

class PackWindow : public PackFixture {
protected:
    void show(const std::function<void(const PackControls&)>& use, ArchiveKind effective = kind::kCreating) {
        job.effective = effective;
        job.owner = host.get();
        const PackDialogUser user([&](HWND shown) { use({shown}); });
        fArcPack dialog(job, fontName);
        dialog.ask();
        EXPECT_EQ(user.times(), 1);
    }
    static RECT placeOf(HWND shown) {
        RECT place{};
        ::GetWindowRect(shown, &place);
        return place;
    }
    static std::string usable(const PackControls& dialog) {
        std::string boxes;
        for (int box = 0; box < 5; ++box) {
            if (dialog.isEnabled(IDC_CHK_ARC + box)) boxes += static_cast<char>('0' + box);
        }
        return boxes;
    }

    std::wstring fontName;
    UniqueWindow host{::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900, 700,
                                        nullptr, nullptr, nullptr, nullptr)};
};

TEST_F(PackWindow, ComesUpWithItsTexts) {
    show([&](const PackControls& dialog) {
        EXPECT_EQ(textOf(dialog.dialog), L"Compress Files");
        EXPECT_EQ(dialog.text(IDC_GRP_PACKER), L"Packer");
        EXPECT_EQ(dialog.text(IDC_GRP_COMPRESSION), L"Compression");
        EXPECT_EQ(dialog.text(IDC_LBL_ACTION), L"Action");
        EXPECT_EQ(dialog.text(IDC_LBL_LEVEL), L"Compression Level");
        EXPECT_EQ(dialog.text(IDC_GRP_OPTION), L"Option");
        EXPECT_EQ(dialog.text(IDC_CHK_ARC), L"Recurse &Folders");
        EXPECT_EQ(dialog.text(IDC_CHK_ARC_FOLDER_INFO), L"Save &Extra Folder Info");
        EXPECT_EQ(dialog.text(IDC_CHK_ARC_PASSWORD), L"Use &Password");
        EXPECT_EQ(dialog.text(IDC_CHK_ARC_SYSTEM), L"Include &System/Hidden Files");
        EXPECT_EQ(dialog.text(IDC_CHK_ARC_FULL_MESSAGE), L"Display Full Message");
        EXPECT_EQ(dialog.text(IDC_LBL_ARC_FILE), L"Archive file:");
        EXPECT_EQ(dialog.text(IDC_LBL_ARC_LIST), L"Selected files/folders:");
        EXPECT_EQ(dialog.text(IDOK), L"&Ok");
        EXPECT_EQ(dialog.text(IDCANCEL), L"&Cancel");
        EXPECT_EQ(dialog.items(IDC_CMB_PACKER), (Names{L"Zip", L"Lha", L"Cab"}));
        EXPECT_EQ(dialog.items(IDC_CMB_ACTION), (Names{L"Add Files (add/replace)", L"Update Files (add/update)",
                                                       L"Freshen Existing Files", L"Move Files"}));
        EXPECT_EQ(dialog.items(IDC_CMB_LEVEL), (Names{L"High Level", L"Medium Level", L"Low Level (just copy)"}));
        for (const auto& [index, data] : {std::pair{0, 9}, {1, 6}, {2, 0}}) {
            EXPECT_EQ(::SendMessageW(dialog.item(IDC_CMB_LEVEL), CB_GETITEMDATA, static_cast<WPARAM>(index), 0), data);
        }
        EXPECT_EQ(dialog.selected(IDC_CMB_PACKER), 0);
        EXPECT_EQ(dialog.selected(IDC_CMB_ACTION), 0);
        EXPECT_EQ(dialog.selected(IDC_CMB_LEVEL), 1);
        EXPECT_EQ(dialog.text(IDC_TXT_ARC_FILE), LR"(C:\out\new.zip)");
        EXPECT_EQ(dialog.names(), (Names{L"a.txt", L"b.txt"}));
        EXPECT_EQ(::GetNextDlgTabItem(dialog.dialog, nullptr, FALSE), dialog.item(IDOK)) << "the first tab position";
        EXPECT_FALSE(::IsWindowEnabled(host.get()));
        dialog.press(IDCANCEL);
    });
    EXPECT_TRUE(library.calls.empty());
    EXPECT_TRUE(::IsWindowEnabled(host.get()));
}

TEST_F(PackWindow, FollowsItsPacker) {
    show([&](const PackControls& dialog) {
        EXPECT_EQ(usable(dialog), "01234");
        EXPECT_TRUE(dialog.isEnabled(IDC_CMB_ACTION));
        EXPECT_TRUE(dialog.isEnabled(IDC_CMB_LEVEL));
        dialog.choose(IDC_CMB_ACTION, 3);
        dialog.choose(IDC_CMB_PACKER, 1);
        EXPECT_EQ(usable(dialog), "03");
        EXPECT_TRUE(dialog.isEnabled(IDC_CMB_ACTION));
        EXPECT_FALSE(dialog.isEnabled(IDC_CMB_LEVEL));
        EXPECT_EQ(dialog.selected(IDC_CMB_ACTION), 0);
        EXPECT_EQ(dialog.text(IDC_TXT_ARC_FILE), LR"(C:\out\new.lzh)");
        dialog.choose(IDC_CMB_PACKER, 2);
        EXPECT_EQ(usable(dialog), "0");
        EXPECT_FALSE(dialog.isEnabled(IDC_CMB_ACTION));
        EXPECT_FALSE(dialog.isEnabled(IDC_CMB_LEVEL));
        EXPECT_EQ(dialog.text(IDC_TXT_ARC_FILE), LR"(C:\out\new.cab)");
        dialog.press(IDCANCEL);
    });
}

TEST_F(PackWindow, HandsOverWhatWasChosen) {
    show([&](const PackControls& dialog) {
        dialog.choose(IDC_CMB_ACTION, 3);
        dialog.choose(IDC_CMB_LEVEL, 0);
        for (int box = 0; box < 4; ++box) dialog.click(IDC_CHK_ARC + box);
        dialog.type(IDC_TXT_ARC_FILE, LR"(C:\out\typed.zip)");
        dialog.press(IDOK);
    });
    ASSERT_EQ(library.calls.size(), 1U);
    const auto& options = library.calls[0].options;
    EXPECT_EQ(options.move, 1);
    EXPECT_EQ(options.recurse, 1);
    EXPECT_EQ(options.encrypt, 1);
    EXPECT_EQ(options.systemAndHidden, 1);
    EXPECT_EQ(options.verbose, 0);
    EXPECT_EQ(options.level, '9');
    EXPECT_EQ(library.calls[0].archive, R"(C:\out\typed.zip)");
    EXPECT_EQ(library.calls[0].slots.at(0), R"(C:\base\a.txt)") << "folder information";
    EXPECT_EQ(archive, LR"(C:\out\typed.zip)");
    EXPECT_TRUE(::IsWindowEnabled(host.get()));
}

TEST_F(PackWindow, HidesWhileItWorks) {
    bool visible = true, enabled = false;
    HWND hidden = nullptr;
    library.whileRunning = [&](ZipEvents&) {
        visible = ::IsWindowVisible(hidden) != FALSE;
        enabled = ::IsWindowEnabled(host.get()) != FALSE;
    };
    show([&](const PackControls& dialog) {
        hidden = dialog.dialog;
        dialog.press(IDOK);
    });
    EXPECT_FALSE(visible);
    EXPECT_TRUE(enabled);
    EXPECT_FALSE(::IsWindow(hidden));
}

TEST_F(PackWindow, TakesTheArchiveThatIsBrowsedFor) {
    wchar_t temporary[MAX_PATH] = L"";
    ASSERT_NE(::GetTempPathW(MAX_PATH, temporary), 0U);
    const std::wstring picked = std::wstring(temporary) + L"picked-in-the-dialog.zip";
    std::wstring title;
    const DialogUser<cmb13> user([&](HWND dialog) {
        title = textOf(dialog);
        ::SetDlgItemTextW(dialog, cmb13, picked.c_str());
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    show([&](const PackControls& dialog) {
        dialog.click(IDC_CMD_ARC_FILE);
        EXPECT_EQ(::CompareStringOrdinal(dialog.text(IDC_TXT_ARC_FILE).c_str(), -1, picked.c_str(), -1, TRUE),
                  CSTR_EQUAL)
            << testing::PrintToString(dialog.text(IDC_TXT_ARC_FILE));
        dialog.press(IDCANCEL);
    });
    EXPECT_EQ(user.times(), 1);
    EXPECT_EQ(title, L"Create Zip File");
    EXPECT_EQ(::GetFileAttributesW(picked.c_str()), INVALID_FILE_ATTRIBUTES) << "nothing is made yet";
}

TEST_F(PackWindow, KeepsItsArchiveWhenBrowsingIsCancelled) {
    const DialogUser<cmb13> user([](HWND dialog) {
        ::SetDlgItemTextW(dialog, cmb13, LR"(C:\other.zip)");
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    });
    show([&](const PackControls& dialog) {
        dialog.click(IDC_CMD_ARC_FILE);
        EXPECT_EQ(dialog.text(IDC_TXT_ARC_FILE), LR"(C:\out\new.zip)");
        dialog.press(IDCANCEL);
    });
    EXPECT_EQ(user.times(), 1);
}

TEST_F(PackWindow, TakesNamesOutOfItsList) {
    show([&](const PackControls& dialog) {
        const HWND names = dialog.item(IDC_LST_ARC_LIST);
        ::SendMessageW(names, LB_SETSEL, TRUE, 0);
        ::SendMessageW(names, WM_KEYDOWN, VK_DELETE, 0);
        EXPECT_EQ(dialog.names(), Names{L"b.txt"});
        dialog.press(IDOK);
    });
    EXPECT_EQ(library.calls.at(0).slots, (std::vector<std::string>{"b.txt", "b.txt"}));
}

TEST_F(PackWindow, StaysWithoutAPacker) {
    show(
        [&](const PackControls& dialog) {
            EXPECT_EQ(dialog.items(IDC_CMB_PACKER), Names{});
            dialog.click(IDOK);
            EXPECT_TRUE(::IsWindowVisible(dialog.dialog));
            dialog.press(IDCANCEL);
        },
        kind::kNone);
    EXPECT_TRUE(library.calls.empty());
}

TEST_F(PackWindow, GrowsWithItsList) {
    show([&](const PackControls& dialog) {
        const RECT before = placeOf(dialog.dialog), names = placeOf(dialog.item(IDC_LST_ARC_LIST));
        const RECT ok = placeOf(dialog.item(IDOK));
        ::SetWindowPos(dialog.dialog, nullptr, before.left, before.top, before.right - before.left + 100,
                       before.bottom - before.top + 60, SWP_NOZORDER);
        const RECT grown = placeOf(dialog.item(IDC_LST_ARC_LIST));
        EXPECT_EQ(grown.right - grown.left, names.right - names.left + 100);
        EXPECT_EQ(grown.bottom - grown.top, names.bottom - names.top + 60);
        EXPECT_EQ(placeOf(dialog.item(IDOK)).left, ok.left + 100);
        EXPECT_EQ(placeOf(dialog.item(IDOK)).top, ok.top + 60);
        dialog.press(IDCANCEL);
    });
}

TEST_F(PackWindow, NamesItsControlsForScreenReaders) {
    show([&](const PackControls& dialog) {
        for (const auto& [control, label] : {std::pair{IDC_CMB_PACKER, IDC_GRP_PACKER},
                                             {IDC_CMB_ACTION, IDC_LBL_ACTION},
                                             {IDC_CMB_LEVEL, IDC_LBL_LEVEL},
                                             {IDC_TXT_ARC_FILE, IDC_LBL_ARC_FILE},
                                             {IDC_LST_ARC_LIST, IDC_LBL_ARC_LIST}}) {
            EXPECT_EQ(::GetWindow(dialog.item(control), GW_HWNDPREV), dialog.item(label)) << control;
        }
        dialog.press(IDCANCEL);
    });
}

TEST_F(PackWindow, TakesTheHostsFont) {
    fontName = L"Courier New";
    show([&](const PackControls& dialog) {
        LOGFONTW font{};
        const auto handle = reinterpret_cast<HFONT>(::SendMessageW(dialog.item(IDC_CMB_ACTION), WM_GETFONT, 0, 0));
        ASSERT_NE(::GetObjectW(handle, sizeof font, &font), 0);
        EXPECT_STREQ(font.lfFaceName, L"Courier New");
        dialog.press(IDCANCEL);
    });
}

TEST_F(PackWindow, ShowsAllMessagesAfterwards) {
    library.whileRunning = [](ZipEvents& events) {
        // More than an edit control takes by itself.
        for (int each = 0; each < 3000; ++each) events.message("adding: some/folder/with/a/long/name.txt\n");
    };
    std::wstring shown;
    const MessagesDialogUser reader([&](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Zip Message");
        const HWND text = ::GetDlgItem(dialog, IDC_TXT_MESSAGES);
        shown = textOf(text);
        EXPECT_NE(::GetWindowLongW(text, GWL_STYLE) & ES_READONLY, 0);
        EXPECT_NE(::GetWindowLongW(dialog, GWL_STYLE) & WS_THICKFRAME, 0);
        ::SendMessageW(::GetDlgItem(dialog, IDC_CMD_COPY), BM_CLICK, 0, 0);
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    show([&](const PackControls& dialog) {
        dialog.setCheck(IDC_CHK_ARC_FULL_MESSAGE, true);
        dialog.press(IDOK);
    });
    EXPECT_EQ(reader.times(), 1);
    EXPECT_EQ(shown.size(),
              3000U * (std::string("adding: some/folder/with/a/long/name.txt").size() + 2) +
                  std::wstring(L"3000 files are added\r\n0 files are updated\r\n0 files are deleted").size());
    std::wstring copied;
    ASSERT_TRUE(::OpenClipboard(host.get()));
    if (const HANDLE data = ::GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        copied = static_cast<const wchar_t*>(::GlobalLock(data));
        ::GlobalUnlock(data);
    }
    ::CloseClipboard();
    EXPECT_EQ(copied, shown);
}

TEST_F(PackWindow, AsksForAComment) {
    const CommentDialogUser user([](HWND dialog) {
        EXPECT_EQ(textOf(::GetDlgItem(dialog, IDC_LBL_COMMENT)), L"Enter the comment");
        ::SetDlgItemTextW(dialog, IDC_TXT_COMMENT, L"two\r\nlines");
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    DialogComments source([] { return std::wstring(); });
    EXPECT_EQ(source.ask(host.get()), L"two\r\nlines");
    EXPECT_EQ(user.times(), 1);
}

TEST_F(PackWindow, TakesNoCommentAfterCancel) {
    const CommentDialogUser user(
        [](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0); });
    EXPECT_EQ(CommentDialog().ask(host.get(), L""), std::nullopt);
}

}  // namespace
}  // namespace tovar::test
