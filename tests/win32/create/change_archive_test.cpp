// Real archives changed by the browser's commands: with its menu, the real dialogs and the bundled libraries.

#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>

#include "shell/win32/folder_dialog_controls.h"
#include "shell/win32/handles.h"
#include "win32/create/change_fixture.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

class ChangeArchive : public ChangeFixture {
protected:
    /// Adds a file as the user does, with the system's dialog.
    std::wstring add(const fs::path& file, int answer = IDYES) {
        const DialogUser<cmb13> user([&](HWND dialog) {
            ::SendMessageW(dialog, CDM_SETCONTROLTEXT, cmb13, reinterpret_cast<LPARAM>(file.c_str()));
            ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        });
        const std::wstring question = change(mnuEditAdd, answer);
        EXPECT_EQ(user.times(), 1);
        return question;
    }
    /// Closes the browser while a dialog is open.
    template <int KnownBy>
    void closeWhileAsked(BrowserCommand which) {
        const std::string before = contentOf(archive);
        const DialogUser<KnownBy> user([this](HWND) { ::PostMessageW(browser().window(), WM_CLOSE, 0, 0); });
        command(which);
        EXPECT_TRUE(waitUntil([&] { return user.done() && !browser().isThere(); }));
        runMessages();
        EXPECT_EQ(user.times(), 1);
        EXPECT_EQ(contentOf(archive), before);
        EXPECT_FALSE(busy());
    }
};

TEST_F(ChangeArchive, Zip) {
    showZip();
    EXPECT_EQ(sortedNames(), (Texts{L"docs", L"empty folder", L"readme.txt"}));

    remove(L"readme.txt", IDCANCEL);
    EXPECT_EQ(sortedNames(), (Texts{L"docs", L"empty folder", L"readme.txt"})) << "declined";
    remove(L"readme.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"docs", L"empty folder"}));
    remove(L"empty folder");
    EXPECT_EQ(sortedNames(), (Texts{L"docs"}));

    browser().openRow(rowOf(L"docs"));
    const std::wstring address = browser().address();
    EXPECT_EQ(sortedNames(), (Texts{L"again.txt", L"empty.txt", L"old notes"}));
    write(L"-new, file.txt", std::string(1234, 'n'));
    EXPECT_EQ(add(base() / L"-new, file.txt"), L"Compress 1 files and folders ?");
    EXPECT_EQ(sortedNames(), (Texts{L"-new, file.txt", L"again.txt", L"empty.txt", L"old notes"}));
    EXPECT_EQ(browser().address(), address) << "the same folder is shown";

    remove(L"old notes");
    EXPECT_EQ(sortedNames(), (Texts{L"-new, file.txt", L"again.txt", L"empty.txt"}));
    remove(L"-new, file.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"again.txt", L"empty.txt"}));
}

TEST_F(ChangeArchive, Lzh) {
    showLzh();
    EXPECT_EQ(sortedNames(), (Texts{L"subdir"}));
    write(L"hello.txt", "another hello");
    write(L"@ my, file.txt", "some text");
    add(base() / L"hello.txt", IDCANCEL);
    EXPECT_EQ(sortedNames(), (Texts{L"subdir"})) << "declined";
    add(base() / L"hello.txt");
    add(base() / L"@ my, file.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"@ my, file.txt", L"hello.txt", L"subdir"}));

    remove(L"hello.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"@ my, file.txt", L"subdir"}));
    browser().openRow(rowOf(L"subdir"));
    browser().openRow(rowOf(L"subdir2"));
    EXPECT_EQ(sortedNames(), (Texts{L"hello.txt"})) << "the one of the same name stays";
    add(base() / L"@ my, file.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"@ my, file.txt", L"hello.txt"}));
    remove(L"hello.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"@ my, file.txt"}));
}

TEST_F(ChangeArchive, IsEmptyWithoutItsLastMemberAndTakesOthers) {
    showZip();
    selectAll();
    change(mnuEditDelete, IDYES);
    EXPECT_EQ(browser().rowCount(), 0);
    EXPECT_EQ(browser().status(), L"Archive has 0 files  Bytes ");
    EXPECT_FALSE(fs::exists(archive));
    write(L"again.txt", "again");
    add(base() / L"again.txt");
    EXPECT_EQ(sortedNames(), Texts{L"again.txt"});
    keep(L"renewed.zip");
}

TEST_F(ChangeArchive, IsEmptyWithoutItsLastMemberAsLzhToo) {
    showLzh();
    remove(L"subdir");
    EXPECT_EQ(browser().rowCount(), 0);
    EXPECT_EQ(browser().status(), L"Archive has 0 files  Bytes ");
    write(L"again.txt", "again");
    add(base() / L"again.txt");
    EXPECT_EQ(sortedNames(), Texts{L"again.txt"});
    keep(L"renewed.lzh");
}

TEST_F(ChangeArchive, TakesAFolderThatIsPicked) {
    showZip();
    write(L"sub\\deep.txt", "deep");
    write(L"top.txt", "top");
    const DialogUser<IDC_WEN_FOLDER_BROWSER> user(
        [](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0); });
    // The dialog begins with the archive's own folder.
    EXPECT_EQ(change(kAddFolder, IDYES), L"Compress 1 files and folders ?");
    EXPECT_EQ(user.times(), 1);
    const std::wstring own = fs::path(folder.path()).filename().native();
    browser().openRow(rowOf(own));
    EXPECT_EQ(sortedNames(), Texts{L"to add"}) << "the archive itself is left out";
}

TEST_F(ChangeArchive, ClosesTheQuestionWithTheWindow) {
    showZip();
    browser().selectRow(0);
    closeWhileAsked<IDC_LBL_QUESTION>(mnuEditDelete);
}

TEST_F(ChangeArchive, ClosesTheDialogForFilesWithTheWindow) {
    showZip();
    closeWhileAsked<cmb13>(mnuEditAdd);
}

TEST_F(ChangeArchive, ClosesTheDialogForFoldersWithTheWindow) {
    showZip();
    closeWhileAsked<IDC_WEN_FOLDER_BROWSER>(kAddFolder);
}

TEST_F(ChangeArchive, StaysAsItIsWhenItIsReadOnly) {
    showZip();
    ::SetFileAttributesW(archive.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string before = contentOf(archive);
    browser().selectRow(rowOf(L"readme.txt"));
    command(mnuEditDelete);
    EXPECT_TRUE(waitUntil([&] { return boxes.seen.size() == 1; }));
    runMessages();
    EXPECT_EQ(boxes.seen.at(0).text, L"The archive is read-only. It was not changed.");
    boxes.seen.clear();
    EXPECT_EQ(contentOf(archive), before);
    EXPECT_EQ(sortedNames(), (Texts{L"docs", L"empty folder", L"readme.txt"}));
    ::SetFileAttributesW(archive.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(ChangeArchive, StaysAsItIsWhileAnotherProgramHasIt) {
    showLzh();
    const std::string before = contentOf(archive);
    {
        const UniqueHandle held = adoptHandle(
            ::CreateFileW(archive.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_NE(held, nullptr);
        remove(L"subdir");
        EXPECT_TRUE(waitUntil([&] { return boxes.seen.size() == 1; }));
        runMessages();
    }
    EXPECT_EQ(boxes.seen.at(0).title, L"LHA Message");
    boxes.seen.clear();
    EXPECT_EQ(contentOf(archive), before);
    EXPECT_EQ(sortedNames(), Texts{L"subdir"});
}

TEST_F(ChangeArchive, OtherKindsStayAsTheyAre) {
    show(L"cab\\mszip_lzx_qtm.cab", L"Cab32.dll");
    const std::string before = contentOf(archive);
    browser().selectRow(0);
    const DialogUser<IDC_LBL_QUESTION> questions([](HWND dialog) { ::PostMessageW(dialog, WM_CLOSE, 0, 0); });
    command(mnuEditDelete);
    command(mnuEditAdd);
    runMessages();
    EXPECT_EQ(questions.times(), 0);
    EXPECT_EQ(contentOf(archive), before);
}

}  // namespace
}  // namespace tovar::test
