#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <oleacc.h>

#include <array>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

/// Keys that go from control to control, and the names by which screen readers call them.
class BrowserKeyboardTest : public BrowserFixture {
protected:
    ~BrowserKeyboardTest() override { holdShift(false); }

    static void holdShift(bool held) {
        std::array<BYTE, 256> keys{};
        ::GetKeyboardState(keys.data());
        keys[VK_SHIFT] = held ? 0x80 : 0;
        ::SetKeyboardState(keys.data());
    }
    void pressOften(WORD key, const std::vector<HWND>& stops) const {
        for (const HWND stop : stops) {
            press(::GetFocus(), key);
            EXPECT_EQ(::GetFocus(), stop);
            EXPECT_TRUE(::IsWindowVisible(stop));
        }
    }
    [[nodiscard]] static std::wstring accessibleName(HWND window) {
        IAccessible* object = nullptr;
        void* answer = nullptr;
        // Not IID_IAccessible: the tool chain's 64-bit oleacc has a function of that name.
        const GUID& wanted = __uuidof(IAccessible);
        if (::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), wanted, &answer) != S_OK) {
            return {};
        }
        object = static_cast<IAccessible*>(answer);
        VARIANT self{};
        self.vt = VT_I4;
        self.lVal = CHILDID_SELF;
        BSTR name = nullptr;
        std::wstring text;
        if (object->get_accName(self, &name) == S_OK && name != nullptr) text = name;
        ::SysFreeString(name);
        object->Release();
        return text;
    }
};

TEST_F(BrowserKeyboardTest, GoesFromPaneToPaneByTab) {
    open({L"a/1"});
    ASSERT_EQ(::GetFocus(), control(LV1));
    pressOften(VK_TAB, {edit(), control(TV1), control(LV1), edit()});
    holdShift(true);
    pressOften(VK_TAB, {control(LV1), control(TV1), edit(), control(LV1)});
}

TEST_F(BrowserKeyboardTest, GoesToEveryControlByF6) {
    open({L"a/1"});
    ASSERT_EQ(::GetFocus(), control(LV1));
    pressOften(VK_F6, {edit(), control(TV1), control(kSplitter), control(LV1)});
    holdShift(true);
    pressOften(VK_F6, {control(kSplitter), control(TV1), edit(), control(LV1)});
}

TEST_F(BrowserKeyboardTest, LeavesTheSplitterByTabAndEscape) {
    open({L"a/1"});
    ::SetFocus(control(kSplitter));
    press(control(kSplitter), VK_TAB);
    EXPECT_EQ(::GetFocus(), control(LV1));
    ::SetFocus(control(kSplitter));
    press(control(kSplitter), VK_ESCAPE);
    EXPECT_EQ(::GetFocus(), control(LV1));
}

TEST_F(BrowserKeyboardTest, ComesToTheMenusByF10) {
    open({L"a/1"});
    press(control(LV1), VK_F10);
    EXPECT_EQ(::GetFocus(), control(kMenuBand));
    press(control(kMenuBand), VK_ESCAPE);
    runPendingMessages();
    EXPECT_EQ(::GetFocus(), control(LV1));
}

TEST_F(BrowserKeyboardTest, ShowsWhichRowAndFolderHaveTheFocus) {
    open({L"a/1", L"2"});
    EXPECT_EQ(send(LV1, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 0);
    EXPECT_NE(treeItem(TVGN_CARET), nullptr);
    const auto style = ::GetWindowLongPtrW(control(TV1), GWL_STYLE);
    EXPECT_NE(style & TVS_SHOWSELALWAYS, 0);
    EXPECT_NE(::GetWindowLongPtrW(control(LV1), GWL_STYLE) & LVS_SHOWSELALWAYS, 0);
}

TEST_F(BrowserKeyboardTest, NamesItsControlsForScreenReaders) {
    open({L"a/1"});
    EXPECT_EQ(accessibleName(control(TV1)), L"Folders");
    EXPECT_EQ(accessibleName(control(LV1)), L"Contents");
    EXPECT_EQ(accessibleName(control(kToolbar)), L"Archive commands");
    EXPECT_EQ(accessibleName(control(kMenuBand)), L"Menu");
    EXPECT_EQ(accessibleName(control(kSplitter)), L"Width of the folder tree");
}

// A box is called by the label before it.
TEST_F(BrowserKeyboardTest, HasALabelBeforeTheAddressBox) {
    open({L"a/1"});
    const HWND label = ::GetWindow(control(cmbURL), GW_HWNDPREV);
    EXPECT_EQ(label, control(kAddressLabel));
    EXPECT_EQ(textOf(label), L"Address");
}

TEST_F(BrowserKeyboardTest, NamesEveryControl) {
    open({L"a/1"});
    for (HWND child = ::GetWindow(window(), GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const int id = ::GetDlgCtrlID(child);
        // The status bar's text is what it says, and the hidden find bar is a mere frame of its controls.
        if (id == sBar1 || !::IsWindowVisible(child)) continue;
        EXPECT_FALSE(textOf(child).empty()) << id;
    }
}

}  // namespace
}  // namespace tovar::test
