#include <gtest/gtest.h>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class FolderTreeTest : public BrowserFixture {
protected:
    /// Clicks the box with which an item is opened and closed.
    void clickButton(HTREEITEM item) const {
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                TVHITTESTINFO hit{};
                hit.pt = {x, y};
                send(TV1, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
                if (hit.hItem != item || (hit.flags & TVHT_ONITEMBUTTON) == 0) continue;
                send(TV1, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
                send(TV1, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
                return;
            }
        }
        FAIL() << "the item has no button";
    }
    [[nodiscard]] TVITEMW item(HTREEITEM handle) const {
        TVITEMW item{};
        item.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN;
        item.hItem = handle;
        send(TV1, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item;
    }
};

TEST_F(FolderTreeTest, ShowsFoldersInTheOrderOfTheirFirstMember) {
    open({L"z/1", L"m/x/2", L"a/3"});
    EXPECT_EQ(textOfItem(root()), L"a.zip");
    EXPECT_EQ(textsIn(root()), (Texts{L"z", L"m", L"a"}));
    EXPECT_TRUE(isExpanded(root()));
    EXPECT_EQ(treeItem(TVGN_NEXT, root()), nullptr);
}

TEST_F(FolderTreeTest, ShowsClosedAndOpenFolders) {
    open({L"a/1"});
    EXPECT_EQ(item(root()).iImage, 1);
    EXPECT_EQ(item(root()).iSelectedImage, 2);
}

TEST_F(FolderTreeTest, HasButtonsOnlyWhereThereIsSomethingInside) {
    open({L"a/b/1", L"c/2"});
    const auto items = itemsIn(root());
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(item(items[0]).cChildren, 1);
    EXPECT_EQ(item(items[1]).cChildren, 0);
}

TEST_F(FolderTreeTest, ShowsTheFolderThatIsSelected) {
    open({L"a/1", L"b/2"});
    selectItem(itemsIn(root())[1]);
    EXPECT_EQ(names(), Texts{L"2"});
    EXPECT_EQ(address(), L"a.zip\\b\\");
    EXPECT_TRUE(goUpEnabled());
    selectItem(root());
    EXPECT_EQ(names(), (Texts{L"a", L"b"}));
    EXPECT_FALSE(goUpEnabled());
}

TEST_F(FolderTreeTest, FollowsTheKeyboard) {
    open({L"a/1", L"b/2"});
    press(control(TV1), VK_DOWN);
    EXPECT_EQ(names(), Texts{L"1"});
}

TEST_F(FolderTreeTest, KeepsTheRootOpen) {
    open({L"a/1"});
    for (const WORD key : {VK_SUBTRACT, VK_LEFT}) {
        press(control(TV1), key);
        runPendingMessages();
        EXPECT_TRUE(isExpanded(root()));
    }
    EXPECT_EQ(names(), Texts{L"a"});
}

TEST_F(FolderTreeTest, KeepsTheCurrentFolderWhenTheRootIsClosedOverIt) {
    open({L"a/1"}, L"\\a\\");
    clickButton(root());
    runPendingMessages();
    EXPECT_TRUE(isExpanded(root()));
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_EQ(names(), Texts{L"1"});
}

TEST_F(FolderTreeTest, ClosesAndOpensOtherFolders) {
    open({L"a/b/1"}, L"\\a\\");
    const HTREEITEM a = itemsIn(root())[0];
    EXPECT_TRUE(isExpanded(a));
    press(control(TV1), VK_SUBTRACT);
    runPendingMessages();
    EXPECT_FALSE(isExpanded(a));
    press(control(TV1), VK_ADD);
    EXPECT_TRUE(isExpanded(a));
}

TEST_F(FolderTreeTest, ShowsTheFolderThatWasClosedOverTheCurrentOne) {
    open({L"a/b/1"}, L"\\a\\b\\");
    clickButton(itemsIn(root())[0]);
    runPendingMessages();
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_EQ(names(), Texts{L"b"});
}

TEST_F(FolderTreeTest, OpensTheWayToTheRequestedFolder) {
    open({L"a/b/c/1", L"a/d/2"}, L"\\a\\b\\");
    const HTREEITEM a = itemsIn(root())[0], b = itemsIn(a)[0];
    EXPECT_EQ(treeItem(TVGN_CARET), b);
    EXPECT_TRUE(isExpanded(a));
    EXPECT_TRUE(isExpanded(b));
    EXPECT_EQ(textsIn(a), (Texts{L"b", L"d"}));
    EXPECT_EQ(textsIn(b), Texts{L"c"});
}

TEST_F(FolderTreeTest, FallsBackToTheRootWhenTheFolderHasVanished) {
    open({L"a/1", L"2"}, L"\\a\\");
    driver_.members = FakeDriver({L"2"}).members;
    EXPECT_TRUE(browser_->FillControl(L"\\a\\"));
    EXPECT_EQ(selectedFolder(), L"a.zip");
    EXPECT_TRUE(textsIn(root()).empty());
    EXPECT_EQ(names(), Texts{L"2"});
}

TEST_F(FolderTreeTest, StaysInTheFolderWhenTheArchiveIsListedAgain) {
    open({L"a/1"}, L"\\a\\");
    driver_.members = FakeDriver({L"new/9", L"a/1", L"a/2"}).members;
    EXPECT_TRUE(browser_->FillControl(L"\\a\\"));
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_EQ(names(), (Texts{L"1", L"2"}));
}

TEST_F(FolderTreeTest, InsertsTheFoldersInsideAFolderWhenItIsOpened) {
    std::vector<std::wstring> storedNames;
    for (int i = 0; i < 5000; ++i) storedNames.push_back(L"all/" + std::to_wstring(i) + L"/file");
    open(storedNames);
    EXPECT_LT(send(TV1, TVM_GETCOUNT), 10);
    EXPECT_EQ(names(), Texts{L"all"});
    EXPECT_TRUE(browser_->FillControl(L"\\all\\4999\\"));
    EXPECT_EQ(selectedFolder(), L"4999");
    EXPECT_EQ(send(TV1, TVM_GETCOUNT), 5002);
    EXPECT_EQ(names(), Texts{L"file"});
}

TEST_F(FolderTreeTest, ShowsNamesOfEveryScript) {
    // Written from right to left, with a combining mark, with a mark that turns the direction, beyond the 16-bit range.
    const Texts written = {L"\u05E9\u05DC\u05D5\u05DD", L"e\u0301te\u0301", L"a\u202Etxt.exe", L"\xD83D\xDCE6"};
    std::vector<std::wstring> storedNames;
    for (const std::wstring& name : written) storedNames.push_back(name + L"/1");
    open(storedNames);
    EXPECT_EQ(textsIn(root()), written);
    for (const std::wstring& name : written) {
        enterAddress(L"a.zip\\" + name + L"\\");
        EXPECT_EQ(selectedFolder(), name);
        EXPECT_EQ(address(), L"a.zip\\" + name + L"\\");
    }
}

TEST_F(FolderTreeTest, GoesDownFiveHundredLevels) {
    std::wstring path, key = L"\\";
    for (int level = 0; level < 500; ++level) {
        path += L"d/";
        key += L"d\\";
    }
    open({path + L"bottom.txt"}, key);
    EXPECT_EQ(names(), Texts{L"bottom.txt"});
    EXPECT_EQ(address(), L"a.zip" + key);
    EXPECT_EQ(send(TV1, TVM_GETCOUNT), 501);
}

}  // namespace
}  // namespace tovar::test
