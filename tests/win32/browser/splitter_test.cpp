#include <gtest/gtest.h>

#include "shell/win32/dpi.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class SplitterTest : public BrowserFixture {
protected:
    [[nodiscard]] RECT placeOf(int id) const {
        RECT place{};
        ::GetWindowRect(control(id), &place);
        ::MapWindowPoints(HWND_DESKTOP, window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    [[nodiscard]] int barLeft() const { return placeOf(kSplitter).left; }
    void drag(int by) const {
        send(kSplitter, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 50));
        send(kSplitter, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(2 + by, 50));
        send(kSplitter, WM_LBUTTONUP, 0, MAKELPARAM(2, 50));
    }
    void resizeBrowser(int width) const {
        ::SetWindowPos(window(), nullptr, 0, 0, width, 500, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
};

TEST_F(SplitterTest, LiesBetweenTheTreeAndTheList) {
    open({L"a/1"});
    EXPECT_EQ(placeOf(TV1).right, placeOf(kSplitter).left);
    EXPECT_EQ(placeOf(kSplitter).right, placeOf(LV1).left);
    EXPECT_EQ(placeOf(kSplitter).top, placeOf(LV1).top);
    EXPECT_EQ(placeOf(kSplitter).bottom, placeOf(LV1).bottom);
}

TEST_F(SplitterTest, FollowsTheMouseWhileItIsHeld) {
    open({L"a/1"});
    const int before = barLeft();
    drag(60);
    EXPECT_EQ(barLeft(), before + 60);
    EXPECT_EQ(placeOf(TV1).right, before + 60);
    EXPECT_NE(::GetCapture(), control(kSplitter));
    send(kSplitter, WM_MOUSEMOVE, 0, MAKELPARAM(90, 50));
    EXPECT_EQ(barLeft(), before + 60);
}

TEST_F(SplitterTest, LetsGoWhenTheMouseIsTakenFromIt) {
    open({L"a/1"});
    const int before = barLeft();
    send(kSplitter, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 50));
    ASSERT_EQ(::GetCapture(), control(kSplitter));
    ::ReleaseCapture();
    send(kSplitter, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(90, 50));
    EXPECT_EQ(barLeft(), before);
}

TEST_F(SplitterTest, RemembersItsPlaceWhenTheWindowShrinksAndGrows) {
    open({L"a/1"});
    ::SendMessageW(window(), 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(96, 96), 0);
    drag(200);
    const int chosen = barLeft();
    resizeBrowser(300);
    EXPECT_LT(barLeft(), chosen);
    EXPECT_GT(placeOf(LV1).right - placeOf(LV1).left, 70);
    resizeBrowser(800);
    EXPECT_EQ(barLeft(), chosen);
}

TEST_F(SplitterTest, RemembersItsPlaceWhenTheArchiveIsListedAgain) {
    open({L"a/1"});
    drag(100);
    const int chosen = barLeft();
    ASSERT_TRUE(browser_->FillControl(L"\\a\\"));
    EXPECT_EQ(barLeft(), chosen);
}

TEST_F(SplitterTest, MovesWithTheArrowKeys) {
    open({L"a/1"});
    ::SetFocus(control(kSplitter));
    ASSERT_EQ(::GetFocus(), control(kSplitter));
    const int before = barLeft(), step = ::MulDiv(8, dpiOf(window()), 96);
    press(control(kSplitter), VK_RIGHT);
    EXPECT_EQ(barLeft(), before + step);
    press(control(kSplitter), VK_LEFT);
    press(control(kSplitter), VK_LEFT);
    EXPECT_EQ(barLeft(), before - step);
    press(control(kSplitter), VK_HOME);
    const int least = barLeft();
    EXPECT_LT(least, before - step);
    press(control(kSplitter), VK_END);
    EXPECT_GT(barLeft(), before);
    press(control(kSplitter), VK_HOME);
    EXPECT_EQ(barLeft(), least);
}

TEST_F(SplitterTest, MakesTheTreeAsWideAsItsTexts) {
    open({L"a folder whose name is so long that the tree is not wide enough/1"});
    ::SendMessageW(window(), 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(96, 96), 0);
    const auto rightOfText = [&] {
        RECT text{};
        const HTREEITEM item = itemsIn(root())[0];
        std::copy_n(reinterpret_cast<const char*>(&item), sizeof item, reinterpret_cast<char*>(&text));
        send(TV1, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&text));
        return text.right;
    };
    RECT client{};
    ::GetClientRect(control(TV1), &client);
    ASSERT_GT(rightOfText(), client.right);
    send(kSplitter, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(2, 50));
    ::GetClientRect(control(TV1), &client);
    EXPECT_GE(client.right, rightOfText());
    EXPECT_LE(client.right, rightOfText() + 8);
    const int fitting = barLeft();
    press(control(kSplitter), VK_RIGHT);
    press(control(kSplitter), VK_RETURN);
    EXPECT_EQ(barLeft(), fitting);
}

TEST_F(SplitterTest, ShowsThatItHasTheKeyboard) {
    open({L"a/1"});
    const auto colour = [&] {
        ::RedrawWindow(control(kSplitter), nullptr, nullptr, RDW_ERASE | RDW_INVALIDATE | RDW_UPDATENOW);
        const HDC device = ::GetDC(control(kSplitter));
        const COLORREF shown = ::GetPixel(device, 2, 20);
        ::ReleaseDC(control(kSplitter), device);
        return shown;
    };
    EXPECT_EQ(colour(), ::GetSysColor(COLOR_BTNFACE));
    ::SetFocus(control(kSplitter));
    EXPECT_EQ(colour(), ::GetSysColor(COLOR_HIGHLIGHT));
    ::SetFocus(control(LV1));
    EXPECT_EQ(colour(), ::GetSysColor(COLOR_BTNFACE));
}

}  // namespace
}  // namespace tovar::test
