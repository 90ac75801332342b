#include "win32/host/host_fixture.h"

namespace tovar::test {
namespace {

class SampleHost : public HostFixture {};

TEST_F(SampleHost, ShowsAFolder) {
    EXPECT_TRUE(::CreateDirectoryW((folder / L"sub").c_str(), nullptr));
    refresh();
    EXPECT_EQ(rows(), (Texts{L"sub", L"small.tar.gz", L"small.zip"}));
    EXPECT_EQ(rows(1)[0], L"");
    EXPECT_EQ(path(), folder.path());
    EXPECT_EQ(status(), L"3 items");
}

TEST_F(SampleHost, OpensAnArchiveByDoubleClick) {
    doubleClick(L"small.zip");
    EXPECT_TRUE(boxes.seen.empty());
    ASSERT_TRUE(browser().isVisible());
    EXPECT_EQ(browser().title(), L"small.zip");
    EXPECT_EQ(browser().names(), (Texts{L"folder", L"readme.txt"}));
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 2 files 241 Bytes "));
    EXPECT_EQ(status(), L"small.zip is open.");
    EXPECT_NE(::GetWindowLongPtrW(browser().window(), GWL_STYLE) & WS_CHILD, 0);
}

TEST_F(SampleHost, OpensAnArchiveByButtonAndByKey) {
    select(L"small.zip");
    click(L"&Open");
    EXPECT_EQ(browser().title(), L"small.zip");
    browser().close();
    select(L"small.tar.gz");
    ::SendMessageW(window, WM_COMMAND, IDOK, 0);  // what Enter sends
    EXPECT_EQ(browser().title(), L"small.tar.gz");
}

TEST_F(SampleHost, GivesTheBrowserItsPlaceAndItsFont) {
    ::SetWindowPos(window, nullptr, 0, 0, 1000, 700, SWP_NOZORDER | SWP_NOMOVE);
    doubleClick(L"small.zip");
    RECT place{};
    ::GetWindowRect(browser().window(), &place);
    EXPECT_EQ(place.right - place.left, 600);
    EXPECT_EQ(place.bottom - place.top, 420);
    const auto faceOf = [](HWND control) {
        LOGFONTW font{};
        const auto handle = reinterpret_cast<HGDIOBJ>(::SendMessageW(control, WM_GETFONT, 0, 0));
        ::GetObjectW(handle, sizeof font, &font);
        return std::wstring(font.lfFaceName);
    };
    EXPECT_EQ(faceOf(browser().list()), faceOf(list()));
}

TEST_F(SampleHost, TurnsASecondArchiveAwayWhileOneIsOpen) {
    doubleClick(L"small.zip");
    const HWND first = browser().window();
    doubleClick(L"small.tar.gz");
    EXPECT_EQ(browser().window(), first);
    EXPECT_EQ(browser().title(), L"small.zip");
    EXPECT_EQ(status(), L"Close the archive that is open first.");
    EXPECT_TRUE(boxes.seen.empty());
    browser().close();
    doubleClick(L"small.tar.gz");
    EXPECT_EQ(browser().title(), L"small.tar.gz");
    EXPECT_EQ(browser().names(), (Texts{L"folder", L"readme.txt"}));
    EXPECT_EQ(status(), L"small.tar.gz is open.");
}

TEST_F(SampleHost, TellsOfAnArchiveThatIsRefused) {
    writeFile(folder, L"broken.zip", "no archive at all");
    refresh();
    boxes.whileUp = [this] { EXPECT_FALSE(::IsWindowEnabled(window)) << "the box comes first"; };
    doubleClick(L"broken.zip");
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, kRefused);
    EXPECT_EQ(boxes.seen[0].title, L"Open 'broken.zip' by Vantrel");
    EXPECT_TRUE(boxes.seen[0].information);
    EXPECT_FALSE(browser().isThere());
    EXPECT_EQ(status(), L"broken.zip is not opened as an archive.");
    EXPECT_TRUE(::IsWindowEnabled(window));
    doubleClick(L"small.zip");
    EXPECT_TRUE(browser().isVisible());
    EXPECT_EQ(boxes.seen.size(), 1U);
}

TEST_F(SampleHost, TellsOfAKindThatIsNotThere) {
    writeFile(folder, L"some.rar", "Rar!");
    refresh();
    doubleClick(L"some.rar");
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, kUnavailable);
    EXPECT_EQ(boxes.seen[0].title, L"Open 'some.rar' by Vantrel");
    EXPECT_TRUE(boxes.seen[0].information);
    EXPECT_EQ(status(), L"some.rar is not opened as an archive.");
}

TEST_F(SampleHost, SaysNothingOfOtherFiles) {
    writeFile(folder, L"read.me", "a text");
    refresh();
    doubleClick(L"read.me");
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(status(), L"read.me is not opened as an archive.");
}

TEST_F(SampleHost, GoesIntoFoldersAndUpAgain) {
    ASSERT_TRUE(::CreateDirectoryW((folder / L"in").c_str(), nullptr));
    writeFile(folder, L"in\\deep.zip", kSmallZip);
    refresh();
    doubleClick(L"in");
    EXPECT_EQ(path(), folder / L"in");
    EXPECT_EQ(rows(), Texts{L"deep.zip"});
    doubleClick(L"deep.zip");
    EXPECT_EQ(browser().title(), L"deep.zip");
    click(L"&Up");
    EXPECT_EQ(path(), folder.path());
    EXPECT_EQ(rows(), (Texts{L"in", L"small.tar.gz", L"small.zip"}));
    EXPECT_TRUE(browser().isVisible()) << "the folder behind it may change";
    browser().openRow(0);
    EXPECT_EQ(browser().names(), Texts{L"inner.txt"});
}

TEST_F(SampleHost, StaysInAFolderWhenAnotherCannotBeRead) {
    ASSERT_TRUE(::CreateDirectoryW((folder / L"gone").c_str(), nullptr));
    refresh();
    ASSERT_TRUE(::RemoveDirectoryW((folder / L"gone").c_str()));
    doubleClick(L"gone");
    EXPECT_EQ(path(), folder.path());
    EXPECT_EQ(status(), L"The folder " + (folder / L"gone") + L" cannot be read.");
}

TEST_F(SampleHost, NamesOutsideTheCodePageAreOpenedLikeOthers) {
    writeFile(folder, L"\x8868 \x05D0 \x00E4.zip", kSmallZip);
    refresh();
    doubleClick(L"\x8868 \x05D0 \x00E4.zip");
    EXPECT_EQ(browser().title(), L"\x8868 \x05D0 \x00E4.zip");
    EXPECT_EQ(browser().names(), (Texts{L"folder", L"readme.txt"}));
}

}  // namespace
}  // namespace tovar::test
