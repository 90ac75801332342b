#include <gtest/gtest.h>

#include "shell/win32/pending_messages.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

/// Archives whose members have names that no one would choose, in the real window.
class OddNames : public BrowserFixture {
protected:
    /// Goes to a row as a user does by the keyboard.
    void openRow(int row) const {
        focus(row);
        press(control(LV1), VK_RETURN);
        runPendingMessages();
    }
    void paintAll() const {
        EXPECT_TRUE(::RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN));
    }
    /// What everything must withstand, whatever the rows are called.
    void handleAll() {
        setRowState(-1, LVIS_SELECTED, LVIS_SELECTED);
        EXPECT_EQ(selectedRows().size(), static_cast<std::size_t>(rowCount()));
        for (LPARAM column = 0; column < 9; ++column) {
            NMLISTVIEW click{};
            click.hdr = {control(LV1), LV1, static_cast<UINT>(LVN_COLUMNCLICK)};
            click.iSubItem = static_cast<int>(column);
            ::SendMessageW(window(), WM_NOTIFY, LV1, reinterpret_cast<LPARAM>(&click));
        }
        for (const ViewStyle style : {ViewStyle::LargeIcons, ViewStyle::SmallIcons, ViewStyle::List,
                                      ViewStyle::ExactDetails, ViewStyle::Details}) {
            ::SendMessageW(window(), WM_COMMAND, static_cast<WPARAM>(commandOf(style)), 0);
            paintAll();
        }
        EXPECT_EQ(selectedRows().size(), static_cast<std::size_t>(rowCount()));
        ::SendMessageW(window(), WM_COMMAND, kRefresh, 0);
        runPendingMessages();
        paintAll();
    }
};

TEST_F(OddNames, ShowsNoRowForAMemberWithoutAName) {
    open({L"", L"a.txt", L""});
    EXPECT_EQ(names(), Texts{L"a.txt"});
    EXPECT_TRUE(textsIn(root()).empty());
    EXPECT_EQ(status(), L"Archive has 3 files 4,321 Bytes 01/05/17 17:30:58");
    handleAll();
}

TEST_F(OddNames, ShowsAnEmptyRootWhenNoMemberHasAName) {
    open({L"", L"/"});
    EXPECT_EQ(rowCount(), 0);
    EXPECT_EQ(selectedFolder(), L"a.zip");
    EXPECT_EQ(address(), L"a.zip\\");
    handleAll();
    EXPECT_EQ(rowCount(), 0);
}

TEST_F(OddNames, AddsNoFolderForSeparatorsAlone) {
    open({L"/", L"///", L"\\\\", L"\\/\\", L"//x.txt", L"b//c.txt"});
    EXPECT_EQ(names(), (Texts{L"b", L"x.txt"}));
    EXPECT_EQ(textsIn(root()), Texts{L"b"});
    openRow(0);
    EXPECT_EQ(names(), Texts{L"c.txt"});
    EXPECT_EQ(address(), L"a.zip\\b\\");
    handleAll();
}

TEST_F(OddNames, ShowsNamesOfThreeHundredCharactersAtEveryLevel) {
    const std::wstring outer(300, L'o'), inner(300, L'i'), name = std::wstring(296, L'n') + L".txt";
    open({outer + L"/" + inner + L"/" + name});
    openRow(0);
    openRow(0);
    EXPECT_EQ(names(), Texts{name});
    EXPECT_EQ(selectedFolder(), inner);
    EXPECT_EQ(address(), L"a.zip\\" + outer + L"\\" + inner + L"\\");
    handleAll();
    EXPECT_EQ(address(), L"a.zip\\" + outer + L"\\" + inner + L"\\");
    enterAddress(L"a.zip\\" + outer);
    EXPECT_EQ(selectedFolder(), outer);
    EXPECT_EQ(names(), Texts{inner});
}

TEST_F(OddNames, KeepsNamesThatAreWrittenFromRightToLeft) {
    const std::wstring folder = L"\u05E9\u05DC\u05D5\u05DD", file = L"\u0645\u0631\u062D\u0628\u0627.txt";
    const std::wstring turned = L"\u202Egpj.exe";  // looks like "exe.jpg"
    open({folder + L"/" + file, turned});
    EXPECT_EQ(names(), (Texts{folder, turned}));
    EXPECT_EQ(textsIn(root()), Texts{folder});
    openRow(0);
    EXPECT_EQ(names(), Texts{file});
    EXPECT_EQ(address(), L"a.zip\\" + folder + L"\\");
    handleAll();
    enterAddress(L"\\");
    enterAddress(L"a.zip\\" + folder);
    EXPECT_EQ(names(), Texts{file});
}

TEST_F(OddNames, KeepsComposedAndCombiningLettersApart) {
    std::wstring heap = L"x";
    for (int i = 0; i < 200; ++i) heap += i % 2 == 0 ? L'\u0301' : L'\u0323';
    open({L"\u00E9/one", L"e\u0301/two", heap, L"\u0301"});
    EXPECT_EQ(names(), (Texts{L"\u00E9", L"e\u0301", heap, L"\u0301"}));
    openRow(1);
    EXPECT_EQ(names(), Texts{L"two"});
    handleAll();
    enterAddress(L"a.zip\\\u00E9\\");
    EXPECT_EQ(names(), Texts{L"one"});
}

TEST_F(OddNames, KeepsControlCharactersAndHalvesOfPairs) {
    const Texts odd{L"line\nbreak", L"tab\there", L"bell\x07", {L'h', L'a', L'l', L'f', wchar_t{0xD800}}, L"  ", L"."};
    open(odd);
    EXPECT_EQ(names(), odd);
    handleAll();
    EXPECT_EQ(names().size(), odd.size());
}

TEST_F(OddNames, TakesDotsForOrdinaryFolders) {
    open({L"../up.txt", L"./here.txt", L"a/../b.txt"});
    EXPECT_EQ(names(), (Texts{L"..", L".", L"a"}));
    enterAddress(L"a.zip\\..\\");
    EXPECT_EQ(names(), Texts{L"up.txt"});
    enterAddress(L"a.zip\\a\\..\\");
    EXPECT_EQ(names(), Texts{L"b.txt"});
    handleAll();
}

TEST_F(OddNames, ShowsTwoMembersOfOneNameAsTwoRows) {
    driver_.members = {{.storedName = L"twin.txt", .original = 1}, {.storedName = L"twin.txt", .original = 2222}};
    openMembers();
    EXPECT_EQ(names(), (Texts{L"twin.txt", L"twin.txt"}));
    EXPECT_EQ(cell(0, 1), L"         1");
    EXPECT_EQ(cell(1, 1), L"     2,222");
    select(1);
    EXPECT_EQ(selectedRows(), std::vector<int>{1});
    EXPECT_EQ(status(), L"1 Objects are selected.");
    handleAll();
}

TEST_F(OddNames, ShowsAFileThatIsAlsoAFolderAsBoth) {
    open({L"a", L"a/b", L"a/b/c", L"c.txt/d"});
    EXPECT_EQ(names(), (Texts{L"a", L"c.txt", L"a"}));
    EXPECT_EQ(cell(0, 4), L"File Folder");
    EXPECT_EQ(cell(1, 4), L"File Folder");
    EXPECT_EQ(cell(2, 4), L"File");
    openRow(2);
    EXPECT_EQ(selectedFolder(), L"a.zip");
    openRow(0);
    EXPECT_EQ(names(), (Texts{L"b", L"b"}));
    EXPECT_EQ(cell(0, 4), L"File Folder");
    EXPECT_EQ(cell(1, 4), L"File");
    handleAll();
}

TEST_F(OddNames, KeepsAnAddressApartFromAFolderThatHasTheArchivesName) {
    open({L"a.zip/a.zip/deep.txt", L"top.txt"});
    openRow(0);
    openRow(0);
    EXPECT_EQ(names(), Texts{L"deep.txt"});
    EXPECT_EQ(address(), L"a.zip\\a.zip\\a.zip\\");
    clickGoUp();
    clickGoUp();
    EXPECT_EQ(names(), (Texts{L"a.zip", L"top.txt"}));
    handleAll();
}

}  // namespace
}  // namespace tovar::test
