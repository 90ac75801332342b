#include <gtest/gtest.h>

#include "shell/win32/dpi.h"
#include "shell/win32/system_icons.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class BrowserWindowTest : public BrowserFixture {
protected:
    static RECT placeOf(HWND window) {
        RECT area{};
        ::GetWindowRect(window, &area);
        return area;
    }
    [[nodiscard]] RECT placeInWindow(int id) const {
        RECT area = placeOf(control(id));
        ::MapWindowPoints(HWND_DESKTOP, window(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    [[nodiscard]] RECT client() const {
        RECT area{};
        ::GetClientRect(window(), &area);
        return area;
    }
};

TEST_F(BrowserWindowTest, IsCreatedHiddenWithoutAParent) {
    create();
    std::array<wchar_t, 32> className{};
    ::GetClassNameW(window(), className.data(), static_cast<int>(className.size()));
    EXPECT_STREQ(className.data(), L"fArcMain");
    EXPECT_FALSE(::IsWindowVisible(window()));
    EXPECT_EQ(::GetAncestor(window(), GA_PARENT), ::GetDesktopWindow());
    const LONG_PTR style = ::GetWindowLongPtrW(window(), GWL_STYLE);
    EXPECT_EQ(style & WS_CAPTION, WS_CAPTION);
    EXPECT_NE(style & WS_CLIPCHILDREN, 0);
    EXPECT_EQ(textOf(window()), L"a.zip");
}

TEST_F(BrowserWindowTest, HasItsControls) {
    create();
    const std::pair<int, const wchar_t*> classes[] = {{kToolbar, TOOLBARCLASSNAMEW},
                                                      {cmbURL, L"ComboBox"},
                                                      {TV1, WC_TREEVIEWW},
                                                      {LV1, WC_LISTVIEWW},
                                                      {sBar1, STATUSCLASSNAMEW}};
    for (const auto& [id, expected] : classes) {
        std::array<wchar_t, 64> className{};
        ::GetClassNameW(control(id), className.data(), static_cast<int>(className.size()));
        EXPECT_STREQ(className.data(), expected);
        EXPECT_NE(::GetWindowLongPtrW(control(id), GWL_STYLE) & WS_VISIBLE, 0);
    }
    EXPECT_EQ(send(kToolbar, TB_BUTTONCOUNT), 3);
    EXPECT_EQ(send(kToolbar, TB_COMMANDTOINDEX, Add), 0);
    EXPECT_EQ(send(kToolbar, TB_COMMANDTOINDEX, Extract), 1);
    EXPECT_EQ(send(kToolbar, TB_COMMANDTOINDEX, GoUp), 2);
}

TEST_F(BrowserWindowTest, ShowsAnArchiveInsideTheHost) {
    open({L"docs/a.txt", L"readme.txt"});
    EXPECT_TRUE(::IsWindowVisible(window()));
    EXPECT_EQ(::GetAncestor(window(), GA_PARENT), host_);
    EXPECT_EQ(selectedFolder(), L"a.zip");
    EXPECT_EQ(textsIn(root()), Texts{L"docs"});
    EXPECT_EQ(names(), (Texts{L"docs", L"readme.txt"}));
    EXPECT_EQ(address(), L"a.zip\\");
    EXPECT_EQ(status(), L"Archive has 2 files 4,321 Bytes 01/05/17 17:30:58");
    EXPECT_FALSE(goUpEnabled());
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(BrowserWindowTest, WorksAsAnOverlappedWindowToo) {
    driver_.members = FakeDriver({L"docs/a.txt"}).members;
    create();
    ::SetParent(window(), host_);
    ASSERT_TRUE(browser_->FillControl(L"\\"));
    browser_->showModeless();
    EXPECT_EQ(names(), Texts{L"docs"});
    EXPECT_TRUE(::IsWindowVisible(window()));
}

TEST_F(BrowserWindowTest, OwnsTheDriversWindows) {
    open({L"a"});
    EXPECT_EQ(driver_.owners, std::vector<WindowHandle>{window()});
}

TEST_F(BrowserWindowTest, StaysHiddenWhenItIsFilledBeforeItIsShown) {
    create();
    placeInHost();
    browser_->suspendPainting(true);
    browser_->FillControl(L"\\");
    browser_->suspendPainting(false);
    EXPECT_FALSE(::IsWindowVisible(window()));
}

TEST_F(BrowserWindowTest, IsVisibleAgainAfterAPauseInItsPainting) {
    open({L"a"});
    browser_->suspendPainting(true);
    browser_->suspendPainting(true);
    EXPECT_FALSE(::IsWindowVisible(window()));
    browser_->FillControl(L"\\");
    browser_->suspendPainting(false);
    EXPECT_TRUE(::IsWindowVisible(window()));
    EXPECT_TRUE(::GetUpdateRect(control(LV1), nullptr, FALSE));
}

TEST_F(BrowserWindowTest, GoesUpByTheToolbar) {
    open({L"a/b/1"}, L"\\a\\b\\");
    EXPECT_TRUE(goUpEnabled());
    clickGoUp();
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_EQ(names(), Texts{L"b"});
    clickGoUp();
    EXPECT_EQ(selectedFolder(), L"a.zip");
    EXPECT_FALSE(goUpEnabled());
}

TEST_F(BrowserWindowTest, GoesUpByBackspace) {
    open({L"a/b/1"}, L"\\a\\b\\");
    press(control(LV1), VK_BACK);
    EXPECT_EQ(selectedFolder(), L"a");
    press(control(TV1), VK_BACK);
    EXPECT_EQ(selectedFolder(), L"a.zip");
}

TEST_F(BrowserWindowTest, FillsItsAreaWithThePanes) {
    open({L"a"});
    const RECT toolbar = placeInWindow(kToolbar), box = placeInWindow(cmbURL), tree = placeInWindow(TV1),
               list = placeInWindow(LV1), bar = placeInWindow(sBar1), area = client();
    EXPECT_GE(tree.top, toolbar.bottom);
    EXPECT_GE(tree.top, box.bottom);
    EXPECT_GT(box.left, toolbar.right - 1);
    EXPECT_EQ(tree.left, 0);
    EXPECT_GT(list.left, tree.right);
    EXPECT_EQ(list.right, area.right);
    EXPECT_EQ(tree.bottom, bar.top);
    EXPECT_EQ(list.bottom, bar.top);
    EXPECT_EQ(bar.bottom, area.bottom);
}

TEST_F(BrowserWindowTest, FollowsItsSize) {
    open({L"a"});
    ::SetWindowPos(window(), nullptr, 0, 0, 600, 400, SWP_NOZORDER | SWP_NOMOVE);
    EXPECT_EQ(placeInWindow(LV1).right, client().right);
    EXPECT_EQ(placeInWindow(LV1).bottom, placeInWindow(sBar1).top);
    ::SetWindowPos(window(), nullptr, 0, 0, 1, 1, SWP_NOZORDER | SWP_NOMOVE);
    ::SetWindowPos(window(), nullptr, 0, 0, 700, 450, SWP_NOZORDER | SWP_NOMOVE);
    EXPECT_EQ(placeInWindow(LV1).right, client().right);
    EXPECT_EQ(names(), Texts{L"a"});
}

TEST_F(BrowserWindowTest, GoesFromControlToControlByTab) {
    open({L"a"});
    ::SetFocus(control(LV1));
    press(control(LV1), VK_TAB);
    EXPECT_EQ(::GetFocus(), edit());
    press(edit(), VK_TAB);
    EXPECT_EQ(::GetFocus(), control(TV1));
    press(control(TV1), VK_TAB);
    EXPECT_EQ(::GetFocus(), control(LV1));
}

TEST_F(BrowserWindowTest, GivesTheFocusBackToTheControlThatHadIt) {
    open({L"a"});
    ::SetFocus(control(TV1));
    runPendingMessages();
    ::SetFocus(host_);
    runPendingMessages();
    ::SetFocus(window());
    EXPECT_EQ(::GetFocus(), control(TV1));
}

// What the window is told of its caption.
std::vector<WPARAM> captionStates;
WNDPROC ownProcedure;
LRESULT CALLBACK watchCaption(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCACTIVATE) captionStates.push_back(wParam);
    return ::CallWindowProcW(ownProcedure, window, message, wParam, lParam);
}

TEST_F(BrowserWindowTest, ShowsByItsCaptionWhetherTheKeyboardIsInIt) {
    open({L"a"});
    ::SetFocus(host_);
    runPendingMessages();
    captionStates.clear();
    ownProcedure = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&watchCaption)));
    ::SetFocus(control(TV1));
    runPendingMessages();
    ::SetFocus(control(LV1));
    runPendingMessages();
    ::SetFocus(host_);
    runPendingMessages();
    EXPECT_EQ(captionStates, (std::vector<WPARAM>{TRUE, FALSE}));
}

TEST_F(BrowserWindowTest, NamesItsControlsForScreenReaders) {
    create();
    EXPECT_EQ(textOf(control(TV1)), L"Folders");
    EXPECT_EQ(textOf(control(LV1)), L"Contents");
    EXPECT_EQ(textOf(::GetWindow(control(cmbURL), GW_HWNDPREV)), L"Address");
}

TEST_F(BrowserWindowTest, KeepsKeysFromAHostThatTreatsItsWindowAsADialog) {
    open({L"a"});
    MSG enter{edit(), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    const auto code = [&](HWND where) {
        return ::SendMessageW(where, WM_GETDLGCODE, enter.wParam, reinterpret_cast<LPARAM>(&enter));
    };
    EXPECT_NE(code(edit()) & DLGC_WANTMESSAGE, 0);
    EXPECT_NE(code(control(LV1)) & DLGC_WANTMESSAGE, 0);
    enter.wParam = VK_ESCAPE;
    EXPECT_NE(code(edit()) & DLGC_WANTMESSAGE, 0);
    enter.wParam = VK_TAB;
    EXPECT_EQ(code(edit()) & DLGC_WANTMESSAGE, 0);
    EXPECT_EQ(code(control(LV1)) & DLGC_WANTMESSAGE, 0);
}

TEST_F(BrowserWindowTest, ShowsTheHostsFont) {
    create(L"Courier New");
    for (const int id : {cmbURL, TV1, LV1, sBar1}) {
        LOGFONTW description{};
        ::GetObjectW(reinterpret_cast<HFONT>(send(id, WM_GETFONT)), sizeof description, &description);
        EXPECT_STREQ(description.lfFaceName, L"Courier New");
    }
}

TEST_F(BrowserWindowTest, ShowsTheSystemsFontOtherwise) {
    create();
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW description{};
    ::GetObjectW(reinterpret_cast<HFONT>(send(LV1, WM_GETFONT)), sizeof description, &description);
    EXPECT_STREQ(description.lfFaceName, metrics.lfMessageFont.lfFaceName);
}

TEST_F(BrowserWindowTest, ShowsTheSystemsIcons) {
    create();
    EXPECT_EQ(reinterpret_cast<HIMAGELIST>(send(TV1, TVM_GETIMAGELIST, TVSIL_NORMAL)),
              SystemImageList(SHGFI_SMALLICON));
    EXPECT_EQ(reinterpret_cast<HIMAGELIST>(send(LV1, LVM_GETIMAGELIST, LVSIL_SMALL)), SystemImageList(SHGFI_SMALLICON));
    EXPECT_EQ(send(LV1, LVM_SETIMAGELIST, LVSIL_SMALL, 0), 0);
    EXPECT_EQ(reinterpret_cast<HIMAGELIST>(send(LV1, LVM_GETIMAGELIST, LVSIL_SMALL)), SystemImageList(SHGFI_SMALLICON));
}

}  // namespace
}  // namespace tovar::test
