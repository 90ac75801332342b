// Real archives changed by the browser's commands: with its menu, the real dialogs and the bundled libraries.

#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>

#include <algorithm>
#include <fstream>

#include "shell/win32/confirmation_dialog_controls.h"
#include "win32/extraction/support/extraction_fixture.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

class ChangeArchive : public ExtractionFixture {
protected:
    void TearDown() override {
        EXPECT_TRUE(boxes.seen.empty()) << testing::PrintToString(boxes.seen.empty() ? L"" : boxes.seen[0].text);
        ExtractionFixture::TearDown();
    }

    void show(const wchar_t* data, const wchar_t* library) {
        libraries.bundled(library);
        create();
        archive = copyOfData(data);
        ASSERT_TRUE(open(archive));
        fs::create_directories(base());
    }
    [[nodiscard]] fs::path base() const { return fs::path(folder.path()) / L"to add"; }

    [[nodiscard]] Texts sortedNames() const {
        Texts names = browser().names();
        std::ranges::sort(names);
        return names;
    }
    [[nodiscard]] int rowOf(const std::wstring& name) const {
        const Texts names = browser().names();
        const auto found = std::ranges::find(names, name);
        EXPECT_NE(found, names.end()) << testing::PrintToString(names);
        return static_cast<int>(found - names.begin());
    }
    /// Runs a command whose question is answered.
    /// @return the question
    std::wstring change(BrowserCommand which, int answer) {
        std::wstring question;
        const DialogUser<IDC_LBL_QUESTION> user([&](HWND dialog) {
            question = textOf(::GetDlgItem(dialog, IDC_LBL_QUESTION));
            ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), 0);
        });
        command(which);
        EXPECT_TRUE(waitUntil([&] { return user.done(); }));
        runMessages();
        return question;
    }
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
    void remove(const std::wstring& name, int answer = IDYES) {
        browser().selectRow(rowOf(name));
        EXPECT_EQ(change(mnuEditDelete, answer), L"Delete the following files/folders ? ");
    }
    void write(const fs::path& name, const std::string& bytes) const {
        std::ofstream(base() / name, std::ios::binary) << bytes;
    }

    std::wstring archive;
};

TEST_F(ChangeArchive, Zip) {
    libraries.bundled(L"InfoZip32.dll");
    show(L"zip\\zip.zip", L"UnZip32.dll");
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
    show(L"lzh\\unix-folders-level1.lzh", L"UnLha32.dll");
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
