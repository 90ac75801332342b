// What can go wrong on the way from the dialog to the files.

#include "browser/win32/work_dialog_controls.h"
#include "shell/win32/folder_dialog_controls.h"
#include "win32/extraction/support/extraction_fixture.h"
#include "win32/system/support/stored_zip.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

class BadInput : public ExtractionFixture {
protected:
    BadInput() { libraries.bundled(L"UnZip32.dll"); }

    void openZip(const std::string& member = "a.txt") {
        StoredZip archive(zip);
        archive.add(member, "content");
        archive.finish();
        create();
        ASSERT_TRUE(open(zip));
    }
    void extractAll() const {
        extract([](const UnpackControls& dialog) { dialog.press(IDOK); });
    }
    void expectTold(const std::wstring& text) {
        ASSERT_EQ(boxes.seen.size(), 1U);
        EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
        EXPECT_EQ(boxes.seen[0].text, text);
        EXPECT_TRUE(boxes.seen[0].exclamation);
    }

    const std::wstring zip = folder / L"some.zip";
};

TEST_F(BadInput, PatternThatMatchesNothing) {
    openZip();
    extract([](const UnpackControls& dialog) {
        dialog.choose(2);
        dialog.type(L"*.none");
        dialog.press(IDOK);
    });
    expectTold(L"File not found at extraction directory");
    EXPECT_FALSE(fs::exists(folder / L"a.txt"));
}

TEST_F(BadInput, FileThatCannotBeReplaced) {
    openZip();
    const UniqueHandle inUse = adoptHandle(::CreateFileW((folder / L"a.txt").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                                         nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_NE(inUse, nullptr);
    extract([](const UnpackControls& dialog) {
        dialog.setCheck(IDC_CHK_OPT, true);
        dialog.press(IDOK);
    });
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_EQ(contentOf(folder / L"a.txt"), "") << "as it was";
}

TEST_F(BadInput, ArchiveThatIsDeletedAfterItsListing) {
    openZip();
    fs::remove(zip);
    extractAll();
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_TRUE(boxes.seen[0].exclamation);
    EXPECT_FALSE(fs::exists(folder / L"a.txt"));
}

TEST_F(BadInput, ArchiveThatIsChangedAfterItsListing) {
    openZip();
    browser().selectRow(0);
    StoredZip archive(zip);
    archive.add("other.txt", "content");
    archive.finish();
    extractAll();
    expectTold(L"File not found at extraction directory");
    EXPECT_FALSE(fs::exists(folder / L"a.txt"));
    EXPECT_FALSE(fs::exists(folder / L"other.txt")) << "nobody asked for it";
}

TEST_F(BadInput, ArchiveThatIsReplacedByAnythingElse) {
    openZip();
    writeFile(folder, L"some.zip", "no archive");
    extractAll();
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
}

TEST_F(BadInput, MemberThatLeadsOutOfTheTarget) {
    openZip("../evil.txt");
    extractAll();
    EXPECT_FALSE(fs::exists(fs::path(folder.path()).parent_path() / L"evil.txt"));
}

TEST_F(BadInput, FileInThePlaceOfAFolder) {
    openZip("docs/a.txt");
    writeFile(folder, L"docs", "mine");
    extractAll();
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_FALSE(boxes.seen[0].text.empty());
    EXPECT_EQ(contentOf(folder / L"docs"), "mine");
}

TEST_F(BadInput, TargetFolderThatHasGone) {
    openZip();
    // The archive lies in the folder that the dialog begins with; the user makes another one there.
    const DialogUser<IDC_TXT_NAME> namer([&](HWND dialog) {
        ::SetDlgItemTextW(dialog, IDC_TXT_NAME, L"new");
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    extract([&](const UnpackControls& dialog) {
        dialog.click(IDC_CMD_NEW_FOLDER);
        ASSERT_EQ(dialog.text(IDC_LBL_FOLDER), folder / L"new");
        fs::remove(folder / L"new");
        dialog.click(IDOK);
        EXPECT_TRUE(::IsWindowVisible(dialog.dialog)) << "another folder can be chosen still";
        dialog.press(IDCANCEL);
    });
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_FALSE(fs::exists(folder / L"new"));
}

/// Codes of libraries, as a disk that is full or cannot be written makes them.
TEST_F(BadInput, DiskThatTakesNothing) {
    const recording::Session session;
    session.script("entry name=a.txt\n");
    libraries.recorded(L"UnZip32.dll");
    create();
    ASSERT_TRUE(open(writeFile(folder, L"some.zip", "whatever")));
    const std::pair<const char*, const wchar_t*> kCases[] = {{"0x8005", L"Not enough disk space to extract file"},
                                                             {"0x8006", L"Directory to extract file is read-only"}};
    for (const auto& [code, text] : kCases) {
        boxes.seen.clear();
        session.script(std::string("entry name=a.txt\ncode ") + code + "\n");
        extractAll();
        expectTold(text);
    }
}

TEST_F(BadInput, PasswordThatNobodyGives) {
    const recording::Session session;
    session.script("entry name=a.txt flags=0x4000\nentry name=b.txt\nprocess 0\n");
    libraries.recorded(L"UnAce.dll");
    create();
    ASSERT_TRUE(open(writeFile(folder, L"some.ace", "whatever")));
    const DialogUser<IDC_TXT_PASSWORD> user(
        [](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0); });
    extractAll();
    EXPECT_EQ(user.times(), 1);
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"ACE Message");
    EXPECT_EQ(boxes.seen[0].text, L"Can not extract:\r\na.txt");
}

TEST_F(BadInput, WorkFolderThatIsNotThere) {
    openZip();
    EXPECT_EQ(object->SetTempDir(makeBstr(folder / L"none\\work").get()), S_OK);
    browser().selectRow(0);
    extract([&](const UnpackControls& dialog) {
        dialog.click(IDOK);
        EXPECT_TRUE(::IsWindowVisible(dialog.dialog)) << "everything else can be done still";
        dialog.choose(1);
        dialog.press(IDOK);
    });
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_FALSE(boxes.seen[0].text.empty());
    EXPECT_TRUE(fs::exists(folder / L"a.txt")) << "all files need no list";
}

}  // namespace
}  // namespace tovar::test
