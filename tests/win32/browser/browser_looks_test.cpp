#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>

#include "shell/win32/dpi.h"
#include "shell/win32/system_icons.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

constexpr UINT kDpiChanged = 0x02E0;

/// The desktop's fonts and colours are put back at the end.
class BrowserLooksTest : public BrowserFixture {
protected:
    BrowserLooksTest() {
        metrics_.cbSize = sizeof metrics_;
        ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics_, &metrics_, 0);
    }
    ~BrowserLooksTest() override {
        ::SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics_, &metrics_, 0);
        setColour(COLOR_WINDOW, windowColour_);
    }

    static void setColour(int which, COLORREF colour) {
        if (::GetSysColor(which) != colour) ::SetSysColors(1, &which, &colour);
    }
    void setScale(int dpi) const {
        RECT place{};
        ::GetWindowRect(window(), &place);
        ::MapWindowPoints(HWND_DESKTOP, host_, reinterpret_cast<POINT*>(&place), 2);
        ::SendMessageW(window(), kDpiChanged, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    }
    [[nodiscard]] int textHeight(int id) const {
        LOGFONTW font{};
        ::GetObjectW(reinterpret_cast<HFONT>(send(id, WM_GETFONT)), sizeof font, &font);
        return std::abs(font.lfHeight);
    }
    [[nodiscard]] RECT placeOf(int id) const {
        RECT place{};
        ::GetWindowRect(control(id), &place);
        ::MapWindowPoints(HWND_DESKTOP, window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    [[nodiscard]] int widthOf(int id) const { return placeOf(id).right - placeOf(id).left; }
    [[nodiscard]] int columnWidth(int column) const {
        return static_cast<int>(send(LV1, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
    }
    [[nodiscard]] int rowHeight() const {
        RECT row{};
        send(LV1, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
        return row.bottom - row.top;
    }
    [[nodiscard]] static int iconSize(LRESULT images) {
        int width = 0, height = 0;
        ::ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(images), &width, &height);
        return width;
    }
    static BOOL CALLBACK findWatch(HWND window, LPARAM answer) {
        wchar_t name[64] = L"";
        ::GetClassNameW(window, name, 64);
        if (std::wcscmp(name, L"TovarExDesktopWatch") != 0) return TRUE;
        *reinterpret_cast<HWND*>(answer) = window;
        return FALSE;
    }
    [[nodiscard]] static HWND desktopWatch() {
        HWND found = nullptr;
        ::EnumThreadWindows(::GetCurrentThreadId(), &findWatch, reinterpret_cast<LPARAM>(&found));
        return found;
    }
    void resizeHost(int width, int height) const {
        RECT outer{0, 0, width, height};
        ::AdjustWindowRectEx(&outer, static_cast<DWORD>(::GetWindowLongPtrW(host_, GWL_STYLE)), FALSE, 0);
        ::SetWindowPos(host_, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        if (browser_) ::SendMessageW(window(), WM_TIMER, HostWatch::kTimer, 0);
    }
    [[nodiscard]] RECT placeInHostNow() const {
        RECT place{};
        ::GetWindowRect(window(), &place);
        ::MapWindowPoints(HWND_DESKTOP, host_, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    void expectPlace(RECT wanted) const {
        const RECT place = placeInHostNow();
        EXPECT_EQ(place.left, wanted.left);
        EXPECT_EQ(place.top, wanted.top);
        EXPECT_EQ(place.right, wanted.right);
        EXPECT_EQ(place.bottom, wanted.bottom);
    }

    NONCLIENTMETRICSW metrics_{};
    COLORREF windowColour_ = ::GetSysColor(COLOR_WINDOW);
};

// What a screen of 96 dots per inch shows in one pixel, one of 288 shows in three.
class BrowserScaleTest : public BrowserLooksTest {
protected:
    /// Does the same at every scale.
    template <class Check>
    void atEveryScale(const Check& check) const {
        for (const int dpi : {96, 120, 144, 192, 288}) {
            SCOPED_TRACE(dpi);
            check(dpi);
        }
    }
};

TEST_F(BrowserScaleTest, ScalesTextsBarsAndIndents) {
    open({L"a/1"});
    setScale(96);
    const int text = textHeight(LV1), bar = widthOf(kSplitter);
    EXPECT_EQ(bar, 5);
    EXPECT_EQ(send(TV1, TVM_GETINDENT), 19);
    atEveryScale([&](int dpi) {
        setScale(dpi);
        for (const int id : {kToolbar, cmbURL, TV1, LV1, sBar1}) {
            EXPECT_NEAR(textHeight(id), text * dpi / 96.0, 1) << id;
        }
        EXPECT_EQ(widthOf(kSplitter), (5 * dpi + 48) / 96);
        EXPECT_EQ(send(TV1, TVM_GETINDENT), (19 * dpi + 48) / 96);
        EXPECT_GE(rowHeight(), textHeight(LV1));
        EXPECT_GE(send(TV1, TVM_GETITEMHEIGHT), textHeight(TV1));
        EXPECT_GE(placeOf(cmbURL).bottom - placeOf(cmbURL).top, textHeight(cmbURL));
    });
}

TEST_F(BrowserScaleTest, ScalesTheRoomOfButtonsAndMenus) {
    open({L"a/1"});
    setScale(96);
    const auto sizeOfButton = [&](int bar, WPARAM place) {
        RECT button{};
        send(bar, TB_GETITEMRECT, place, reinterpret_cast<LPARAM>(&button));
        return SIZE{button.right - button.left, button.bottom - button.top};
    };
    constexpr std::pair<int, WPARAM> kButtons[] = {{kToolbar, 0}, {kToolbar, 2}, {kMenuBand, 0}, {kMenuBand, 1}};
    std::vector<SIZE> before;
    for (const auto& [bar, place] : kButtons) before.push_back(sizeOfButton(bar, place));
    EXPECT_GE(before[0].cy, 16 + 6);
    EXPECT_GE(before[2].cy, textHeight(kMenuBand) + 6);
    atEveryScale([&](int dpi) {
        setScale(dpi);
        for (std::size_t each = 0; each < std::size(kButtons); ++each) {
            const auto [bar, place] = kButtons[each];
            const SIZE size = sizeOfButton(bar, place);
            EXPECT_NEAR(size.cx, before[each].cx * dpi / 96.0, before[each].cx * dpi / 96.0 / 8 + 2) << each;
            EXPECT_NEAR(size.cy, before[each].cy * dpi / 96.0, before[each].cy * dpi / 96.0 / 8 + 2) << each;
        }
    });
}

TEST_F(BrowserScaleTest, TakesTheShellsLargestIconsThatFit) {
    open({L"a/1"});
    const auto expectFit = [](LRESULT images, int wanted) {
        EXPECT_EQ(images, reinterpret_cast<LRESULT>(SystemImageListOfSize(wanted)));
        EXPECT_LE(iconSize(images), std::max(wanted, ::GetSystemMetrics(SM_CXSMICON)));
    };
    atEveryScale([&](int dpi) {
        setScale(dpi);
        const int small = 16 * dpi / 96, large = 32 * dpi / 96;
        expectFit(send(LV1, LVM_GETIMAGELIST, LVSIL_SMALL), small);
        expectFit(send(LV1, LVM_GETIMAGELIST, LVSIL_NORMAL), large);
        expectFit(send(TV1, TVM_GETIMAGELIST, TVSIL_NORMAL), small);
    });
}

TEST_F(BrowserScaleTest, MeasuresTheColumnsAnew) {
    open({L"1"});
    setScale(96);
    const int columns = static_cast<int>(headers().size());
    std::vector<int> before;
    for (int column = 0; column < columns; ++column) before.push_back(columnWidth(column));
    atEveryScale([&](int dpi) {
        setScale(dpi);
        for (int column = 0; column < columns; ++column) {
            const int wanted = before[static_cast<std::size_t>(column)] * dpi / 96;
            EXPECT_NEAR(columnWidth(column), wanted, wanted / 8 + 2) << column;
        }
    });
    setScale(96);
    for (int column = 0; column < columns; ++column) {
        EXPECT_EQ(columnWidth(column), before[static_cast<std::size_t>(column)]) << column;
    }
}

TEST_F(BrowserScaleTest, KeepsTheProportionOfAColumnThatTheUserHasDragged) {
    open({L"1"});
    setScale(96);
    const int own = columnWidth(0);
    send(LV1, LVM_SETCOLUMNWIDTH, 0, 2 * own);
    atEveryScale([&](int dpi) {
        setScale(dpi);
        EXPECT_NEAR(columnWidth(0), 2 * own * dpi / 96, own * dpi / 96 / 4);
    });
}

TEST_F(BrowserScaleTest, KeepsEveryControlInsideTheWindowAndApart) {
    open({L"a/1"});
    atEveryScale([&](int dpi) {
        setScale(dpi);
        RECT client{};
        ::GetClientRect(window(), &client);
        const int below = placeOf(sBar1).top;
        EXPECT_GE(placeOf(cmbURL).top, 0);
        EXPECT_LE(placeOf(cmbURL).bottom, placeOf(LV1).top);
        EXPECT_LE(placeOf(kToolbar).right, placeOf(kAddressLabel).left);
        EXPECT_LE(placeOf(kAddressLabel).right, placeOf(cmbURL).left);
        EXPECT_LE(placeOf(cmbURL).right, client.right);
        EXPECT_EQ(placeOf(TV1).right, placeOf(kSplitter).left);
        EXPECT_EQ(placeOf(kSplitter).right, placeOf(LV1).left);
        EXPECT_EQ(placeOf(LV1).right, client.right);
        EXPECT_LE(placeOf(LV1).bottom, below);
        EXPECT_EQ(placeOf(sBar1).bottom, client.bottom);
    });
}

TEST_F(BrowserLooksTest, GoesWhereTheSystemWantsItAtAnotherScale) {
    open({L"1"});
    RECT place{30, 40, 730, 440};
    ::SendMessageW(window(), kDpiChanged, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&place));
    expectPlace({30, 40, 730, 440});
}

TEST_F(BrowserLooksTest, StaysAtItsScaleWhenItIsSized) {
    open({L"1"});
    setScale(288);
    ::SetWindowPos(window(), nullptr, 0, 0, 700, 450, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(widthOf(kSplitter), 15);
}

TEST_F(BrowserLooksTest, ComesUpAtTheScaleOfItsScreen) {
    open({L"1"});
    EXPECT_EQ(widthOf(kSplitter), ::MulDiv(5, dpiOf(window()), 96));
    EXPECT_EQ(send(LV1, LVM_GETIMAGELIST, LVSIL_SMALL), reinterpret_cast<LRESULT>(SystemImageList(SHGFI_SMALLICON)));
    EXPECT_EQ(send(LV1, LVM_GETIMAGELIST, LVSIL_NORMAL), reinterpret_cast<LRESULT>(SystemImageList(SHGFI_LARGEICON)));
}

TEST_F(BrowserLooksTest, FollowsTheDesktopsFont) {
    open({L"1"});
    const int before = textHeight(LV1), column = columnWidth(0);
    NONCLIENTMETRICSW larger = metrics_;
    larger.lfMessageFont.lfHeight *= 2;
    ASSERT_TRUE(::SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof larger, &larger, 0));
    ASSERT_NE(desktopWatch(), nullptr);
    ::SendMessageW(desktopWatch(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
    for (const int id : {kToolbar, cmbURL, TV1, LV1, sBar1}) EXPECT_NEAR(textHeight(id), 2 * before, 1) << id;
    EXPECT_NEAR(columnWidth(0), 2 * column, column / 4);
    EXPECT_LE(placeOf(cmbURL).bottom, placeOf(LV1).top);
}

TEST_F(BrowserLooksTest, KeepsTheHostsFontInTheDesktopsSize) {
    create(L"Courier New");
    placeInHost();
    ASSERT_TRUE(browser_->FillControl(L"\\"));
    browser_->showModeless();
    const int before = textHeight(LV1);
    NONCLIENTMETRICSW larger = metrics_;
    larger.lfMessageFont.lfHeight *= 2;
    ASSERT_TRUE(::SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof larger, &larger, 0));
    ::SendMessageW(desktopWatch(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
    EXPECT_NEAR(textHeight(LV1), 2 * before, 1);
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HFONT>(send(TV1, WM_GETFONT)), sizeof font, &font);
    EXPECT_STREQ(font.lfFaceName, L"Courier New");
}

TEST_F(BrowserLooksTest, FollowsTheDesktopsColours) {
    open({L"1"});
    const auto shownIn = [&](int id) {
        ::RedrawWindow(window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        RECT area{};
        ::GetClientRect(control(id), &area);
        const HDC device = ::GetDC(control(id));
        const COLORREF colour = ::GetPixel(device, area.right - 3, area.bottom - 3);
        ::ReleaseDC(control(id), device);
        return colour;
    };
    ASSERT_EQ(shownIn(LV1), windowColour_);
    const COLORREF dark = RGB(32, 32, 48);
    setColour(COLOR_WINDOW, dark);
    ::SendMessageW(desktopWatch(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(shownIn(LV1), dark);
    EXPECT_EQ(shownIn(TV1), dark);
}

TEST_F(BrowserLooksTest, ListensToTheDesktopNoLongerThanItLives) {
    open({L"1"});
    ASSERT_NE(desktopWatch(), nullptr);
    browser_->unload();
    EXPECT_EQ(desktopWatch(), nullptr);
}

TEST_F(BrowserLooksTest, KeepsItsShareOfAHostThatIsResized) {
    resizeHost(1000, 700);
    open({L"1"});
    setScale(96);  // its least size is that of the scale
    ::SetWindowPos(window(), nullptr, 200, 140, 600, 420, SWP_NOZORDER | SWP_NOACTIVATE);
    resizeHost(1200, 900);
    expectPlace({240, 180, 960, 720});
    resizeHost(800, 600);
    expectPlace({160, 120, 640, 480});
    resizeHost(1000, 700);
    expectPlace({200, 140, 800, 560});
}

TEST_F(BrowserLooksTest, PaintsTheWholeStatusBarWhenItGrows) {
    open({L"1"});
    setScale(96);  // its least size is that of the scale
    ::RedrawWindow(window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    ASSERT_FALSE(::GetUpdateRect(control(sBar1), nullptr, FALSE));
    ::SetWindowPos(window(), nullptr, 0, 0, 880, 560, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    RECT stale{}, bar{};
    ::GetUpdateRect(control(sBar1), &stale, FALSE);
    ::GetClientRect(control(sBar1), &bar);
    EXPECT_TRUE(::EqualRect(&stale, &bar));
}

TEST_F(BrowserLooksTest, FollowsFromWhereItsUserHasPutIt) {
    resizeHost(1000, 700);
    open({L"1"});
    setScale(96);  // its least size is that of the scale
    ::SetWindowPos(window(), nullptr, 0, 0, 500, 700, SWP_NOZORDER | SWP_NOACTIVATE);
    resizeHost(1200, 800);
    expectPlace({0, 0, 600, 800});
}

LRESULT CALLBACK layOutBrowser(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR browser) {
    if (message == WM_SIZE)
        ::SetWindowPos(reinterpret_cast<HWND>(browser), nullptr, 10, 20, 500, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    return ::DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(BrowserLooksTest, LeavesItsPlaceToAHostThatLaysItOut) {
    resizeHost(1000, 700);
    open({L"1"});
    setScale(96);  // its least size is that of the scale
    ASSERT_TRUE(::SetWindowSubclass(host_, &layOutBrowser, 1, reinterpret_cast<DWORD_PTR>(window())));
    resizeHost(1200, 900);
    expectPlace({10, 20, 510, 320});
    resizeHost(900, 600);
    expectPlace({10, 20, 510, 320});
    ::RemoveWindowSubclass(host_, &layOutBrowser, 1);
}

TEST_F(BrowserLooksTest, LetsTheHostGoWhenItIsUnloaded) {
    const LONG_PTR procedure = ::GetWindowLongPtrW(host_, GWLP_WNDPROC);
    open({L"1"});
    browser_->unload();
    EXPECT_EQ(::GetWindowLongPtrW(host_, GWLP_WNDPROC), procedure);
    resizeHost(900, 600);
}

TEST_F(BrowserLooksTest, OpensItsListOfAddressesAsWideAsTheyAre) {
    const std::wstring longName(120, L'w');
    open({L"a/1", longName + L"/2"});
    const auto narrow = send(cmbURL, CB_GETDROPPEDWIDTH);
    ::SetWindowPos(window(), nullptr, 0, 0, 400, 400, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    selectItem(itemsIn(root())[1]);
    ASSERT_EQ(address(), L"a.zip\\" + longName + L"\\");
    const auto wide = send(cmbURL, CB_GETDROPPEDWIDTH);
    EXPECT_GT(wide, narrow);
    EXPECT_GT(wide, 120 * 5);
    EXPECT_LE(wide, ::GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(BrowserLooksTest, ShowsTheEndOfAnAddressThatIsTooLongForItsBox) {
    open({std::wstring(200, L'w') + L"/end/1"}, L"\\" + std::wstring(200, L'w') + L"\\end\\");
    const auto length = static_cast<WPARAM>(::GetWindowTextLengthW(edit()));
    const auto last = ::SendMessageW(edit(), EM_POSFROMCHAR, length - 1, 0);
    RECT area{};
    ::GetClientRect(edit(), &area);
    EXPECT_GE(static_cast<short>(LOWORD(last)), 0);
    EXPECT_LT(static_cast<short>(LOWORD(last)), area.right);
}

}  // namespace
}  // namespace tovar::test
