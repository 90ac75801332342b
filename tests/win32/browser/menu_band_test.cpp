#include <gtest/gtest.h>

#include "win32/browser/browser_fixture.h"
#include "win32/browser/menu_driver.h"

namespace tovar::test {
namespace {

class MenuBandTest : public BrowserFixture {
protected:
    [[nodiscard]] bool isBandEnabled(int menu) const {
        return send(kMenuBand, TB_ISBUTTONENABLED, static_cast<WPARAM>(menu)) != FALSE;
    }
    [[nodiscard]] LRESULT hotItem() const { return send(kMenuBand, TB_GETHOTITEM); }
    /// Types a letter with Alt, as it comes to the control that has the keyboard.
    void typeAlt(HWND where, wchar_t letter) const {
        ::SendMessageW(where, WM_SYSCHAR, letter, 1 << 29);
        runPendingMessages();
    }
    void clickBand(int place) const {
        RECT area{};
        send(kMenuBand, TB_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&area));
        send(kMenuBand, WM_LBUTTONDOWN, MK_LBUTTON,
             MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2));
        runPendingMessages();
    }
    static MenuDriver::Step whenOpenOf(int place, const wchar_t* text, std::function<void(HMENU)> act) {
        return {[=] { return openMenu() != nullptr && textOfEntry(openMenu(), place) == text; },
                [act = std::move(act)] { act(openMenu()); }};
    }
};

TEST_F(MenuBandTest, HasEditAndView) {
    create();
    EXPECT_EQ(send(kMenuBand, TB_BUTTONCOUNT), 2);
    EXPECT_EQ(send(kMenuBand, TB_COMMANDTOINDEX, mnuEdit), 0);
    EXPECT_EQ(send(kMenuBand, TB_COMMANDTOINDEX, mnuView), 1);
    EXPECT_EQ(textOf(control(kMenuBand)), L"Menu");
}

TEST_F(MenuBandTest, HasNoEditMenuWithoutAnArchive) {
    create();
    EXPECT_FALSE(isBandEnabled(mnuEdit));
    EXPECT_TRUE(isBandEnabled(mnuView));
    EXPECT_FALSE(send(kToolbar, TB_ISBUTTONENABLED, Extract));
    EXPECT_FALSE(send(kToolbar, TB_ISBUTTONENABLED, Add));
    ASSERT_TRUE(browser_->FillControl(L"\\"));
    EXPECT_TRUE(isBandEnabled(mnuEdit));
    EXPECT_TRUE(send(kToolbar, TB_ISBUTTONENABLED, Extract));
    EXPECT_FALSE(send(kToolbar, TB_ISBUTTONENABLED, Add));
}

TEST_F(MenuBandTest, OpensTheEditMenuByTheMouse) {
    open({L"a.txt"});
    Texts texts;
    bool canExtract = false, canDelete = true, canAdd = true;
    {
        const MenuDriver driver({MenuDriver::whenOpen([&](HMENU menu) {
            texts = textsOf(menu);
            canExtract = isEntryEnabled(menu, mnuEditExtract);
            canDelete = isEntryEnabled(menu, mnuEditDelete);
            canAdd = isEntryEnabled(menu, mnuEditAdd);
        })});
        clickBand(0);
    }
    EXPECT_EQ(texts,
              (Texts{L"&Open\tEnter", L"&Extract...\tCtrl+E", L"", L"&Add...", L"Add &whole folder...", L"&Delete\tDel",
                     L"", L"&Copy\tCtrl+C", L"&Paste\tCtrl+V", L"", L"&Select", L"", L"&Find...\tCtrl+F",
                     L"Find &next\tF3", L"Find pre&vious\tShift+F3", L"", L"E&xit\tCtrl+F4"}));
    EXPECT_TRUE(canExtract);
    EXPECT_FALSE(canDelete);
    EXPECT_FALSE(canAdd);
    EXPECT_FALSE(send(kMenuBand, TB_ISBUTTONPRESSED, mnuEdit));
}

TEST_F(MenuBandTest, MarksTheViewStyleAmongItsLikes) {
    open({L"a.txt"});
    ::SendMessageW(window(), WM_COMMAND, mnuViewStyleList, 0);
    UINT list = 0, details = 0, type = 0;
    {
        const MenuDriver driver({MenuDriver::whenOpen([&](HMENU menu) {
            const HMENU styles = entryOf(menu, mnuViewStyle).hSubMenu;
            list = entryOf(styles, mnuViewStyleList).fState;
            details = entryOf(styles, mnuViewStyleDetails).fState;
            type = entryOf(styles, mnuViewStyleList).fType;
        })});
        clickBand(1);
    }
    EXPECT_NE(list & MFS_CHECKED, 0U);
    EXPECT_EQ(details & MFS_CHECKED, 0U);
    EXPECT_NE(type & MFT_RADIOCHECK, 0U);
}

TEST_F(MenuBandTest, RunsWhatIsChosenByLetters) {
    open({L"a.txt"});
    {
        const MenuDriver driver({MenuDriver::letter(window(), L'e')});
        typeAlt(control(LV1), L'e');
    }
    runPendingMessages();
    EXPECT_EQ(actions_.extracted.size(), 1U);
    EXPECT_EQ(actions_.owners, std::vector<WindowHandle>{window()});
}

TEST_F(MenuBandTest, OpensByAltFromTheTreeAndTheAddressBoxToo) {
    open({L"a.txt"});
    for (const HWND pane : {control(TV1), edit()}) {
        bool opened = false;
        {
            const MenuDriver driver({MenuDriver::whenOpen([&](HMENU) { opened = true; })});
            typeAlt(pane, L'v');
        }
        EXPECT_TRUE(opened);
    }
}

TEST_F(MenuBandTest, GoesFromMenuToMenuByTheArrowKeys) {
    open({L"a.txt"});
    {
        const MenuDriver driver({
            whenOpenOf(0, L"&Open\tEnter", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_RIGHT, 0); }),
            whenOpenOf(0, L"&Style", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_LEFT, 0); }),
            whenOpenOf(0, L"&Open\tEnter", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_LEFT, 0); }),
            whenOpenOf(0, L"&Style", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_ESCAPE, 0); }),
        });
        clickBand(0);
    }
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_FALSE(send(kMenuBand, TB_ISBUTTONPRESSED, mnuView));
}

TEST_F(MenuBandTest, LeavesTheArrowKeysToMenusInside) {
    open({L"a.txt"});
    {
        // The first entry is selected by the key that opened the menu: it has a menu inside.
        const MenuDriver driver({
            whenOpenOf(0, L"&Style", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_RIGHT, 0); }),
            whenOpenOf(0, L"Lar&ge icons\tCtrl+1", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_LEFT, 0); }),
            whenOpenOf(0, L"&Style", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_RIGHT, 0); }),
            whenOpenOf(0, L"Lar&ge icons\tCtrl+1", [&](HMENU) { ::PostMessageW(window(), WM_KEYDOWN, VK_RETURN, 0); }),
        });
        typeAlt(control(LV1), L'v');
    }
    EXPECT_EQ(::GetWindowLongPtrW(control(LV1), GWL_STYLE) & LVS_TYPEMASK, LVS_ICON);
}

TEST_F(MenuBandTest, GoesToTheBandByF10AndBackByEscape) {
    open({L"a.txt"});
    ::SendMessageW(control(LV1), WM_SYSKEYDOWN, VK_F10, 0);
    EXPECT_EQ(::GetFocus(), control(kMenuBand));
    EXPECT_EQ(hotItem(), 0);
    press(control(kMenuBand), VK_RIGHT);
    EXPECT_EQ(hotItem(), 1);
    press(control(kMenuBand), VK_RIGHT);
    EXPECT_EQ(hotItem(), 0);
    press(control(kMenuBand), VK_LEFT);
    EXPECT_EQ(hotItem(), 1);
    press(control(kMenuBand), VK_ESCAPE);
    EXPECT_EQ(::GetFocus(), control(LV1));
    EXPECT_EQ(hotItem(), -1);
}

TEST_F(MenuBandTest, OpensTheMenuOfTheBandThatHasTheKeyboard) {
    open({L"a.txt"});
    ::SendMessageW(control(TV1), WM_SYSKEYDOWN, VK_F10, 0);
    press(control(kMenuBand), VK_RIGHT);
    bool opened = false;
    {
        const MenuDriver driver({whenOpenOf(0, L"&Style", [&](HMENU) {
            opened = true;
            ::PostMessageW(window(), WM_KEYDOWN, VK_ESCAPE, 0);
        })});
        press(control(kMenuBand), VK_DOWN);
        runPendingMessages();
    }
    EXPECT_TRUE(opened);
    EXPECT_EQ(::GetFocus(), control(kMenuBand));  // as after Escape in every menu bar
}

TEST_F(MenuBandTest, PassesOverMenusThatAreDisabled) {
    create();
    browser_->showModeless();
    ::SendMessageW(control(LV1), WM_SYSKEYDOWN, VK_F10, 0);
    EXPECT_EQ(hotItem(), 1);
    press(control(kMenuBand), VK_RIGHT);
    EXPECT_EQ(hotItem(), 1);
    EXPECT_EQ(::SendMessageW(control(LV1), WM_SYSCHAR, L'e', 1 << 29), 0);
    runPendingMessages();
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(MenuBandTest, KeepsItsKeysFromAHostThatTreatsItsWindowAsADialog) {
    open({L"a.txt"});
    EXPECT_NE(send(kMenuBand, WM_GETDLGCODE) & DLGC_WANTALLKEYS, 0);
}

TEST_F(MenuBandTest, SurvivesTheWindowWhileAMenuIsOpen) {
    open({L"a.txt"});
    {
        const MenuDriver driver({MenuDriver::whenOpen([&](HMENU) { ::DestroyWindow(window()); })});
        clickBand(0);
    }
    EXPECT_EQ(browser_->hWnd(), nullptr);
    EXPECT_EQ(timesUnloaded_, 1);
    EXPECT_EQ(openMenu(), nullptr);
}

}  // namespace
}  // namespace tovar::test
