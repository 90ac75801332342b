#include <gtest/gtest.h>

#include "win32/browser/browser_fixture.h"
#include "win32/browser/menu_driver.h"

namespace tovar::test {
namespace {

class ContextMenuTest : public BrowserFixture {
protected:
    /// Asks for the menu of a pane, -1 = by the keyboard, and gives its texts; `choose` is then chosen by its letter.
    Texts ask(int pane, LPARAM place, wchar_t choose = 0) {
        Texts texts;
        std::vector<MenuDriver::Step> steps{MenuDriver::whenOpen([&](HMENU menu) {
            texts = textsOf(menu);
            bold_ = ::GetMenuDefaultItem(menu, FALSE, 0);
        })};
        if (choose != 0) steps.push_back(MenuDriver::letter(window(), choose));
        {
            const MenuDriver driver(std::move(steps));
            ::SendMessageW(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(control(pane)), place);
            runPendingMessages();
        }
        runPendingMessages();
        return texts;
    }
    [[nodiscard]] LPARAM onScreen(int pane, int x, int y) const {
        POINT point{x, y};
        ::ClientToScreen(control(pane), &point);
        return MAKELPARAM(point.x, point.y);
    }
    [[nodiscard]] LPARAM onRow(int row) const {
        RECT area{};
        area.left = LVIR_LABEL;
        send(LV1, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
        return onScreen(LV1, area.left + 3, (area.top + area.bottom) / 2);
    }
    [[nodiscard]] LPARAM onFolder(HTREEITEM item) const {
        RECT area{};
        TreeView_GetItemRect(control(TV1), item, &area, TRUE);
        return onScreen(TV1, area.left + 3, (area.top + area.bottom) / 2);
    }
    UINT bold_ = 0;
    const Texts kRows{L"&Open\tEnter",        L"&Extract...\tCtrl+E",      L"&Copy\tCtrl+C", L"&Delete\tDel", L"",
                      L"Se&lect all\tCtrl+A", L"&Invert selection\tCtrl+I"};
    const Texts kEmpty{L"&Style",
                       L"",
                       L"&Add...",
                       L"Add &whole folder...",
                       L"&Paste\tCtrl+V",
                       L"Se&lect all\tCtrl+A",
                       L"",
                       L"&Refresh\tF5",
                       L"Go &up\tBackspace"};
    const Texts kFolders{L"&Open", L"&Extract..."};
};

TEST_F(ContextMenuTest, OffersOnARowWhatCanBeDoneWithIt) {
    open({L"a.txt", L"b.txt"});
    select(1);
    EXPECT_EQ(ask(LV1, onRow(1), L'e'), kRows);
    EXPECT_EQ(bold_, static_cast<UINT>(kOpen));
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{{std::nullopt, 1}}}));
}

TEST_F(ContextMenuTest, IsThatOfTheRowThatIsClickedWhereverThePointerIs) {
    open({L"a.txt", L"b.txt"});
    POINT former{};
    ::GetCursorPos(&former);
    ::SetCursorPos(990, 690);  // outside of the list
    RECT area{};
    area.left = LVIR_LABEL;
    send(LV1, LVM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&area));
    const LPARAM middle = MAKELPARAM(area.left + 3, (area.top + area.bottom) / 2);
    Texts texts;
    const auto click = [&](LPARAM place) {
        const MenuDriver driver({MenuDriver::whenOpen([&](HMENU menu) { texts = textsOf(menu); })});
        ::PostMessageW(control(LV1), WM_RBUTTONUP, 0, place);  // a list may wait for it
        send(LV1, WM_RBUTTONDOWN, MK_RBUTTON, place);
        runPendingMessages();
    };
    click(middle);
    EXPECT_EQ(selectedRows(), std::vector<int>{1});
    EXPECT_EQ(texts, kRows);
    click(MAKELPARAM(area.left + 3, area.bottom + 100));
    EXPECT_TRUE(selectedRows().empty());
    EXPECT_EQ(texts, kEmpty);
    // A click leaves nothing behind for the keyboard's menu.
    select(0);
    EXPECT_EQ(ask(LV1, -1), kRows);
    ::SetCursorPos(former.x, former.y);
}

TEST_F(ContextMenuTest, OffersViewStylesBesideTheRows) {
    open({L"a.txt"});
    RECT area{};
    ::GetClientRect(control(LV1), &area);
    EXPECT_EQ(ask(LV1, onScreen(LV1, 20, area.bottom - 30)), kEmpty);
}

TEST_F(ContextMenuTest, OpensAtTheSelectionByTheKeyboard) {
    open({L"d/1", L"b.txt"});
    EXPECT_EQ(ask(LV1, -1), kEmpty);
    select(0);
    focus(0);
    EXPECT_EQ(ask(LV1, -1, L'o'), kRows);
    EXPECT_EQ(selectedFolder(), L"d");
}

TEST_F(ContextMenuTest, SelectsAllAndInverts) {
    open({L"a", L"b", L"c"});
    select(0);
    ask(LV1, -1, L'i');
    EXPECT_EQ(selectedRows(), (std::vector<int>{1, 2}));
    EXPECT_EQ(status(), L"2 Objects are selected.");
    ask(LV1, -1, L'l');
    EXPECT_EQ(selectedRows(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(status(), L"3 Objects are selected.");
}

TEST_F(ContextMenuTest, OpensAndExtractsFoldersOfTheTree) {
    open({L"a/1", L"b/2"});
    const auto folders = itemsIn(root());
    EXPECT_EQ(ask(TV1, onFolder(folders[1]), L'e'), kFolders);
    EXPECT_EQ(bold_, static_cast<UINT>(kOpen));
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{{Folder{2}, 0}}}));
    EXPECT_EQ(selectedFolder(), L"a.zip");
    EXPECT_EQ(treeItem(TVGN_DROPHILITE), nullptr);
    ask(TV1, onFolder(folders[0]), L'o');
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_EQ(names(), Texts{L"1"});
}

TEST_F(ContextMenuTest, MeansTheSelectedFolderOfTheTreeByTheKeyboard) {
    open({L"a/1", L"b/2"}, L"\\b\\");
    EXPECT_EQ(ask(TV1, -1, L'e'), kFolders);
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{{Folder{2}, 0}}}));
}

TEST_F(ContextMenuTest, HasNoMenuForOtherControls) {
    open({L"a"});
    ::SendMessageW(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(header()), onScreen(LV1, 5, 5));
    runPendingMessages();
    EXPECT_EQ(openMenu(), nullptr);
}

}  // namespace
}  // namespace tovar::test
