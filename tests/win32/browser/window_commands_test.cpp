#include <gtest/gtest.h>

#include <algorithm>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class WindowCommandsTest : public BrowserFixture {
protected:
    void choose(int command) const {
        ::SendMessageW(window(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        runPendingMessages();
    }
    void type(HWND where, WORD key) const {
        press(where, key);
        runPendingMessages();
    }
    void typeControl(HWND where, WORD key) const { typeWith(VK_CONTROL, where, WM_KEYDOWN, key); }
    void typeAlt(HWND where, WORD key) const { typeWith(VK_MENU, where, WM_SYSKEYDOWN, key); }
    void clickFirstHeader() const {
        ::SendMessageW(header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
        ::SendMessageW(header(), WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
    }
    [[nodiscard]] LONG_PTR listStyle() const { return ::GetWindowLongPtrW(control(LV1), GWL_STYLE) & LVS_TYPEMASK; }
    [[nodiscard]] bool isButtonEnabled(int button) const {
        return send(kToolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(button)) != FALSE;
    }

private:
    // As if the keyboard of this thread had the key down.
    static void typeWith(int held, HWND where, UINT message, WORD key) {
        std::array<BYTE, 256> former{};
        ::GetKeyboardState(former.data());
        auto state = former;
        state[static_cast<std::size_t>(held)] = 0x80;
        ::SetKeyboardState(state.data());
        ::SendMessageW(where, message, key, 0);
        ::SetKeyboardState(former.data());
        runPendingMessages();
    }
};

TEST_F(WindowCommandsTest, SelectsAllRows) {
    open({L"d/1", L"a", L"b"});
    choose(mnuEditSelectAll);
    EXPECT_EQ(selectedRows(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(status(), L"3 Objects are selected.");
}

TEST_F(WindowCommandsTest, InvertsTheSelection) {
    open({L"a", L"b", L"c", L"d", L"e"});
    select(1);
    choose(mnuEditSelectInvert);
    EXPECT_EQ(selectedRows(), (std::vector<int>{0, 2, 3, 4}));
    EXPECT_EQ(status(), L"4 Objects are selected.");
    choose(mnuEditSelectInvert);
    EXPECT_EQ(selectedRows(), std::vector<int>{1});
    EXPECT_EQ(status(), L"1 Objects are selected.");
    choose(mnuEditSelectAll);
    choose(mnuEditSelectInvert);
    EXPECT_TRUE(selectedRows().empty());
    EXPECT_EQ(status(), L"0 Objects are selected.");
    choose(mnuEditSelectInvert);
    EXPECT_EQ(selectedRows().size(), 5U);
}

TEST_F(WindowCommandsTest, SelectsAndInvertsByKeys) {
    open({L"a", L"b", L"c"});
    typeControl(control(LV1), 'A');
    EXPECT_EQ(status(), L"3 Objects are selected.");
    typeControl(control(TV1), 'I');
    EXPECT_EQ(status(), L"0 Objects are selected.");
}

TEST_F(WindowCommandsTest, InvertsAVeryLongList) {
    std::vector<std::wstring> storedNames;
    for (int i = 0; i < 100000; ++i) storedNames.push_back(std::to_wstring(i));
    open(storedNames);
    select(7);
    choose(mnuEditSelectInvert);
    EXPECT_EQ(status(), L"99999 Objects are selected.");
    EXPECT_EQ(send(LV1, LVM_GETITEMSTATE, 7, LVIS_SELECTED), 0);
    EXPECT_EQ(send(LV1, LVM_GETITEMSTATE, 8, LVIS_SELECTED), LVIS_SELECTED);
    EXPECT_EQ(desktop_.asked.size(), 1U);  // no row was asked for its type
}

TEST_F(WindowCommandsTest, ListsTheArchiveAgainByF5) {
    open({L"d/1", L"a"}, L"\\d\\");
    driver_.members = FakeDriver({L"d/1", L"d/2"}).members;
    type(control(LV1), VK_F5);
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_EQ(selectedFolder(), L"d");
    EXPECT_EQ(names(), (Texts{L"1", L"2"}));
    type(edit(), VK_F5);
    EXPECT_EQ(driver_.listed.size(), 3U);
}

TEST_F(WindowCommandsTest, GoesUpByAltUp) {
    open({L"a/b/1"}, L"\\a\\b\\");
    typeAlt(control(LV1), VK_UP);
    EXPECT_EQ(selectedFolder(), L"a");
    typeAlt(control(TV1), VK_UP);
    EXPECT_EQ(selectedFolder(), L"a.zip");
}

TEST_F(WindowCommandsTest, GoesFromPaneToPaneByF6) {
    open({L"a"});
    std::vector<HWND> panes{control(LV1)};
    for (int i = 0; i < 4; ++i) {
        type(panes.back(), VK_F6);
        panes.push_back(::GetFocus());
    }
    EXPECT_NE(std::ranges::find(panes, edit()), panes.end());
    EXPECT_NE(std::ranges::find(panes, control(TV1)), panes.end());
    EXPECT_EQ(panes.back(), control(LV1));
}

TEST_F(WindowCommandsTest, LeavesTheKeysOfTextsToTheAddressBox) {
    open({L"a/1", L"b"}, L"\\a\\");
    for (const WORD key : {WORD{VK_DELETE}, WORD{VK_BACK}}) type(edit(), key);
    typeControl(edit(), 'A');
    typeControl(edit(), 'I');
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_TRUE(selectedRows().empty());
    EXPECT_TRUE(actions_.deleted.empty());
}

TEST_F(WindowCommandsTest, DeletesTheSelectedRowsByDelete) {
    driver_.changeable = true;
    open({L"a", L"b"});
    type(control(LV1), VK_DELETE);
    EXPECT_TRUE(actions_.deleted.empty());
    select(1);
    type(control(TV1), VK_DELETE);
    EXPECT_TRUE(actions_.deleted.empty());
    actions_.changesArchive = true;
    actions_.whileWorking = [this] { driver_.members.pop_back(); };
    type(control(LV1), VK_DELETE);
    EXPECT_EQ(actions_.deleted, (std::vector<std::vector<ArchiveMember>>{{{std::nullopt, 1}}}));
    EXPECT_EQ(names(), Texts{L"a"});
}

TEST_F(WindowCommandsTest, OffersAddOnlyForArchivesThatCanBeChanged) {
    open({L"a"});
    EXPECT_FALSE(isButtonEnabled(Add));
    choose(Add);
    EXPECT_TRUE(actions_.addedTo.empty());
    driver_.changeable = true;
    ASSERT_TRUE(browser_->FillControl(L"\\"));
    EXPECT_TRUE(isButtonEnabled(Add));
    choose(Add);
    EXPECT_EQ(actions_.addedTo, std::vector<Folder>{FolderModel::kRoot});
}

TEST_F(WindowCommandsTest, ExtractsByTheToolbar) {
    open({L"a", L"b"});
    choose(Extract);
    select(1);
    choose(Extract);
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{}, {{std::nullopt, 1}}}));
}

TEST_F(WindowCommandsTest, OpensAFileByEnterAndByADoubleClick) {
    open({L"a", L"b"});
    select(1);
    focus(1);
    type(control(LV1), VK_RETURN);
    EXPECT_EQ(actions_.opened, std::vector<std::uint32_t>{1});
    NMITEMACTIVATE click{};
    click.hdr = {control(LV1), LV1, static_cast<UINT>(NM_DBLCLK)};
    click.iItem = 0;
    ::SendMessageW(window(), WM_NOTIFY, LV1, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(actions_.opened.size(), 1U);  // not inside the list's own message
    runPendingMessages();
    EXPECT_EQ(actions_.opened, (std::vector<std::uint32_t>{1, 0}));
}

TEST_F(WindowCommandsTest, ClearsAndClosesOnExit) {
    open({L"a/1", L"b"});
    ::SendMessageW(window(), WM_COMMAND, mnuEditExit, 0);
    EXPECT_TRUE(::IsWindow(window()));  // not inside the message
    runPendingMessages();
    EXPECT_EQ(browser_->hWnd(), nullptr);
    EXPECT_EQ(timesUnloaded_, 1);
}

TEST_F(WindowCommandsTest, CancelsTheCommandWhenItIsClosedMeanwhile) {
    open({L"a"});
    actions_.whileWorking = [this] { ::SendMessageW(window(), WM_CLOSE, 0, 0); };
    choose(Extract);
    EXPECT_EQ(browser_->hWnd(), nullptr);
    EXPECT_GE(actions_.timesCancelled, 1);
    EXPECT_EQ(timesUnloaded_, 1);
}

TEST_F(WindowCommandsTest, OutlivesItsWindowWhileACommandWorks) {
    open({L"a"});
    actions_.whileWorking = [this] { ::DestroyWindow(host_); };
    actions_.changesArchive = true;
    driver_.changeable = true;
    ASSERT_TRUE(browser_->FillControl(L"\\"));
    choose(Add);
    EXPECT_EQ(browser_->hWnd(), nullptr);
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_EQ(actions_.timesCancelled, 1);
}

TEST_F(WindowCommandsTest, ShowsTheRowsInEveryStyle) {
    open({L"d/1", L"a.txt", L"b.txt", L"c.txt"});
    select(1);
    select(3);
    const std::pair<int, LONG_PTR> styles[] = {{mnuViewStyleLargeIcons, LVS_ICON},
                                               {mnuViewStyleSmallIcons, LVS_SMALLICON},
                                               {mnuViewStyleList, LVS_LIST},
                                               {mnuViewStyleExactDetails, LVS_REPORT},
                                               {mnuViewStyleDetails, LVS_REPORT}};
    for (const auto& [command, style] : styles) {
        choose(command);
        ::UpdateWindow(control(LV1));
        EXPECT_EQ(listStyle(), style);
        EXPECT_EQ(names(), (Texts{L"d", L"a.txt", L"b.txt", L"c.txt"}));
        EXPECT_EQ(selectedRows(), (std::vector<int>{1, 3}));
        EXPECT_EQ(status(), L"2 Objects are selected.");
    }
}

TEST_F(WindowCommandsTest, ShowsExactDetailsWithTheSameColumns) {
    driver_.members = {{.storedName = L"big", .original = 12'345'678'901}};
    openMembers();
    const Texts columns = headers();
    EXPECT_EQ(cell(0, 1), L"45,678,901");
    choose(mnuViewStyleExactDetails);
    EXPECT_EQ(headers(), columns);
    EXPECT_EQ(cell(0, 1), L"12,345,678,901");
    choose(mnuViewStyleDetails);
    EXPECT_EQ(cell(0, 1), L"45,678,901");
}

TEST_F(WindowCommandsTest, KeepsStyleAndOrderInOtherFoldersAndAfterListing) {
    open({L"d/1", L"d/2", L"a"});
    clickFirstHeader();
    choose(mnuViewStyleList);
    selectItem(itemsIn(root())[0]);
    EXPECT_EQ(listStyle(), LVS_LIST);
    EXPECT_EQ(names(), (Texts{L"2", L"1"}));
    ASSERT_TRUE(browser_->FillControl(L"\\d\\"));
    EXPECT_EQ(listStyle(), LVS_LIST);
    EXPECT_EQ(names(), (Texts{L"2", L"1"}));
}

TEST_F(WindowCommandsTest, ChangesTheStyleByKeys) {
    open({L"a"});
    typeControl(control(LV1), '1');
    EXPECT_EQ(listStyle(), LVS_ICON);
    typeControl(edit(), '3');
    EXPECT_EQ(listStyle(), LVS_LIST);
    typeControl(control(TV1), '4');
    EXPECT_EQ(listStyle(), LVS_REPORT);
}

TEST_F(WindowCommandsTest, OpensFoldersInEveryStyle) {
    open({L"d/1", L"a"});
    choose(mnuViewStyleLargeIcons);
    select(0);
    focus(0);
    type(control(LV1), VK_RETURN);
    EXPECT_EQ(selectedFolder(), L"d");
}

TEST_F(WindowCommandsTest, HasHintsForItsButtons) {
    open({L"a"});
    const std::pair<int, const wchar_t*> hints[] = {{Add, L"Add files to the archive"},
                                                    {Extract, L"Extract the selected files, or all (Ctrl+E)"},
                                                    {GoUp, L"Go to the folder above (Backspace)"}};
    for (const auto& [button, hint] : hints) {
        NMTTDISPINFOW question{};
        question.hdr.idFrom = static_cast<UINT_PTR>(button);
        question.hdr.code = TTN_GETDISPINFOW;
        ::SendMessageW(window(), WM_NOTIFY, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(&question));
        EXPECT_STREQ(question.lpszText, hint);
    }
}

TEST_F(WindowCommandsTest, WorksWhenTheHostTreatsItsWindowAsADialog) {
    open({L"a/b/1"}, L"\\a\\b\\");
    MSG key{control(LV1), WM_KEYDOWN, VK_BACK, 0, 0, {}};
    EXPECT_TRUE(::IsDialogMessageW(host_, &key));
    EXPECT_EQ(selectedFolder(), L"a");
    key.wParam = VK_F5;
    EXPECT_TRUE(::IsDialogMessageW(host_, &key));
    runPendingMessages();
    EXPECT_EQ(driver_.listed.size(), 2U);
    select(0);
    focus(0);
    key.wParam = VK_RETURN;
    EXPECT_TRUE(::IsDialogMessageW(host_, &key));
    EXPECT_EQ(selectedFolder(), L"b");
}

}  // namespace
}  // namespace tovar::test
