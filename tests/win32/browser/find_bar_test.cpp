#include "browser/win32/find_bar.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

/// Keys that are held down while the object lives.
class HeldKeys {
public:
    HeldKeys(std::initializer_list<int> keys) {
        ::GetKeyboardState(former_.data());
        auto held = former_;
        for (const int key : keys) held[static_cast<std::size_t>(key)] = 0x80;
        ::SetKeyboardState(held.data());
    }
    ~HeldKeys() { ::SetKeyboardState(former_.data()); }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

private:
    std::array<BYTE, 256> former_{};
};

class FindBarTest : public BrowserFixture {
protected:
    [[nodiscard]] HWND bar() const { return control(kFindBar); }
    [[nodiscard]] HWND inBar(int id) const { return ::GetDlgItem(bar(), id); }
    [[nodiscard]] HWND field() const { return inBar(kFindText); }
    [[nodiscard]] bool isShown() const { return ::IsWindowVisible(bar()) != FALSE; }
    [[nodiscard]] std::wstring state() const { return textOf(inBar(kFindState)); }
    [[nodiscard]] COLORREF fieldColour() const {
        const HDC device = ::GetDC(field());
        ::SendMessageW(bar(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(device), reinterpret_cast<LPARAM>(field()));
        const COLORREF colour = ::GetBkColor(device);
        ::ReleaseDC(field(), device);
        return colour;
    }

    void pressWith(HWND where, int held, WORD key) const {
        const HeldKeys keys{held};
        press(where, key);
    }
    void openBar() const { pressWith(control(LV1), VK_CONTROL, 'F'); }
    void type(std::wstring_view text) const {
        for (const wchar_t each : text) ::SendMessageW(field(), WM_CHAR, each, 0);
    }
    void find(std::wstring_view text) const {
        openBar();
        type(text);
    }
    void click(int id) const { ::SendMessageW(inBar(id), BM_CLICK, 0, 0); }

    [[nodiscard]] std::wstring found() const {
        const auto rows = selectedRows();
        const auto focused = send(LV1, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
        return rows.size() == 1 && focused == rows.front() ? selectedFolder() + L": " + cell(rows.front(), 0) : L"";
    }
    [[nodiscard]] bool isInSight(int row) const {
        const auto top = static_cast<int>(send(LV1, LVM_GETTOPINDEX));
        return row >= top && row < top + static_cast<int>(send(LV1, LVM_GETCOUNTPERPAGE));
    }
    /// Runs messages until the search has ended.
    [[nodiscard]] bool waitForEnd() const {
        constexpr ULONGLONG kLongest = 60'000;  // milliseconds
        for (const ULONGLONG start = ::GetTickCount64(); ::GetTickCount64() - start < kLongest;) {
            if (state() != L"Searching...") return true;
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
            runPendingMessages();
        }
        return false;
    }
    [[nodiscard]] RECT placeOf(HWND shown) const {
        RECT place{};
        ::GetWindowRect(shown, &place);
        ::MapWindowPoints(HWND_DESKTOP, window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    /// Whatever the screen's own scale is.
    void setScale(int dpi) const { ::SendMessageW(window(), 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(dpi, dpi), 0); }
    void openManyMembers() {
        driver_.members.resize(80'000);
        for (std::size_t number = 0; number < driver_.members.size(); ++number) {
            driver_.members[number].storedName = L"member " + std::to_wstring(number);
        }
        openMembers();
    }
};

TEST_F(FindBarTest, IsHiddenUntilItIsAskedFor) {
    open({L"a"});
    EXPECT_FALSE(isShown());
    press(control(LV1), VK_F5);
    EXPECT_FALSE(isShown());
}

TEST_F(FindBarTest, IsShownByItsKeyFromEveryPane) {
    open({L"a"});
    for (const HWND pane : {control(LV1), control(TV1), edit()}) {
        ::SetFocus(pane);
        pressWith(pane, VK_CONTROL, 'F');
        EXPECT_TRUE(isShown());
        EXPECT_EQ(::GetFocus(), field());
        press(field(), VK_ESCAPE);
        EXPECT_FALSE(isShown());
        EXPECT_EQ(::GetFocus(), pane);
    }
}

TEST_F(FindBarTest, IsShownByItsCommand) {
    open({L"a"});
    ::SendMessageW(window(), WM_COMMAND, kFind, 0);
    EXPECT_TRUE(isShown());
    EXPECT_EQ(::GetFocus(), field());
}

TEST_F(FindBarTest, HasNamesForScreenReaders) {
    open({L"a"});
    EXPECT_EQ(textOf(bar()), L"Find in the archive");
    EXPECT_EQ(textOf(inBar(kFindNext)), L"&Next");
    EXPECT_EQ(textOf(inBar(kFindPrevious)), L"&Previous");
    EXPECT_EQ(textOf(inBar(kFindClose)), L"Close");
    // A text field is called what the label before it says.
    const HWND label = ::GetWindow(field(), GW_HWNDPREV);
    EXPECT_EQ(label, inBar(kFindLabel));
    EXPECT_EQ(textOf(label), L"Find:");
}

TEST_F(FindBarTest, LiesBetweenListAndStatusBar) {
    open({L"a"});
    const RECT before = placeOf(control(LV1));
    openBar();
    const RECT place = placeOf(bar()), list = placeOf(control(LV1)), tree = placeOf(control(TV1));
    EXPECT_GT(place.bottom, place.top);
    EXPECT_EQ(place.top, list.bottom);
    EXPECT_EQ(place.top, tree.bottom);
    EXPECT_EQ(place.bottom, placeOf(control(sBar1)).top);
    EXPECT_EQ(list.top, before.top);
    press(field(), VK_ESCAPE);
    const RECT after = placeOf(control(LV1));
    EXPECT_TRUE(::EqualRect(&after, &before));
}

TEST_F(FindBarTest, HasRoomForItsControlsInEveryWidth) {
    open({L"a"});
    setScale(96);
    openBar();
    for (const int width : {1000, 600, 420, 320}) {
        ::SetWindowPos(window(), nullptr, 0, 0, width, 400, SWP_NOZORDER | SWP_NOMOVE);
        LONG left = placeOf(bar()).left;
        for (const int id :
             std::initializer_list<int>{kFindLabel, kFindText, kFindNext, kFindPrevious, kFindState, kFindClose}) {
            const RECT place = placeOf(inBar(id));
            EXPECT_GE(place.left, left) << id;
            if (id != kFindState) {
                EXPECT_GE(place.right - place.left, 20) << id;
            }
            left = place.right;
        }
        EXPECT_LE(left, placeOf(bar()).right) << width;
        const RECT shown = placeOf(inBar(kFindState));
        // Where there is room for some letters only, there are none.
        EXPECT_EQ(::IsRectEmpty(&shown) != FALSE, width == 320);
    }
}

TEST_F(FindBarTest, GrowsWithTheScale) {
    open({L"a"});
    setScale(96);
    openBar();
    const RECT before = placeOf(bar()), button = placeOf(inBar(kFindNext));
    setScale(192);
    const RECT after = placeOf(bar()), grown = placeOf(inBar(kFindNext));
    EXPECT_GE(after.bottom - after.top, 3 * (before.bottom - before.top) / 2);
    EXPECT_GE(grown.right - grown.left, 3 * (button.right - button.left) / 2);
    EXPECT_EQ(after.bottom, placeOf(control(sBar1)).top);
}

TEST_F(FindBarTest, HasTheFontOfTheWindow) {
    open({L"a"});
    for (const int id :
         std::initializer_list<int>{kFindLabel, kFindText, kFindNext, kFindPrevious, kFindState, kFindClose}) {
        EXPECT_EQ(::SendMessageW(inBar(id), WM_GETFONT, 0, 0), send(LV1, WM_GETFONT)) << id;
    }
}

TEST_F(FindBarTest, FindsWhileTheTextIsTyped) {
    open({L"a/b/readme.txt", L"rest"});
    find(L"re");
    EXPECT_EQ(found(), L"a.zip: rest");
    type(L"a");
    EXPECT_EQ(found(), L"b: readme.txt");
    EXPECT_EQ(address(), L"a.zip\\a\\b\\");
    EXPECT_EQ(status(), L"1 Objects are selected.");
    EXPECT_EQ(::GetFocus(), field());
    ::SendMessageW(field(), WM_CHAR, VK_BACK, 0);
    EXPECT_EQ(found(), L"a.zip: rest");
}

TEST_F(FindBarTest, GoesToTheNextAndThePreviousByKeys) {
    open({L"x1", L"d/x2", L"d/x3"});
    find(L"x");
    EXPECT_EQ(found(), L"a.zip: x1");
    press(field(), VK_RETURN);
    EXPECT_EQ(found(), L"d: x2");
    press(field(), VK_F3);
    EXPECT_EQ(found(), L"d: x3");
    pressWith(field(), VK_SHIFT, VK_RETURN);
    EXPECT_EQ(found(), L"d: x2");
    pressWith(field(), VK_SHIFT, VK_F3);
    EXPECT_EQ(found(), L"a.zip: x1");
    EXPECT_EQ(::GetFocus(), field());
}

TEST_F(FindBarTest, GoesToTheNextAndThePreviousFromTheList) {
    open({L"x1", L"d/x2", L"d/x3"});
    find(L"x");
    ::SetFocus(control(LV1));
    press(control(LV1), VK_F3);
    press(control(LV1), VK_F3);
    EXPECT_EQ(found(), L"d: x3");
    pressWith(control(LV1), VK_SHIFT, VK_F3);
    EXPECT_EQ(found(), L"d: x2");
    EXPECT_EQ(::GetFocus(), control(LV1));
}

TEST_F(FindBarTest, GoesToTheNextAndThePreviousByButtons) {
    open({L"x1", L"d/x2", L"d/x3"});
    openBar();
    EXPECT_FALSE(::IsWindowEnabled(inBar(kFindNext)));
    EXPECT_FALSE(::IsWindowEnabled(inBar(kFindPrevious)));
    type(L"x");
    EXPECT_TRUE(::IsWindowEnabled(inBar(kFindNext)));
    EXPECT_TRUE(::IsWindowEnabled(inBar(kFindPrevious)));
    click(kFindNext);
    EXPECT_EQ(found(), L"d: x2");
    click(kFindPrevious);
    EXPECT_EQ(found(), L"a.zip: x1");
    // Enter presses the button that the keyboard is at.
    press(inBar(kFindNext), VK_RETURN);
    EXPECT_EQ(found(), L"d: x2");
    press(inBar(kFindPrevious), VK_RETURN);
    EXPECT_EQ(found(), L"a.zip: x1");
    {
        const HeldKeys alt{VK_MENU};
        ::SendMessageW(field(), WM_SYSCHAR, L'n', 0);
        EXPECT_EQ(found(), L"d: x2");
        ::SendMessageW(field(), WM_SYSCHAR, L'p', 0);
        EXPECT_EQ(found(), L"a.zip: x1");
    }
    ::SetFocus(inBar(kFindNext));
    ::SetWindowTextW(field(), L"");
    EXPECT_FALSE(::IsWindowEnabled(inBar(kFindNext)));
    EXPECT_EQ(::GetFocus(), field());
}

TEST_F(FindBarTest, IsClosedByItsButtonAndByEscape) {
    open({L"a"});
    ::SetFocus(control(TV1));
    pressWith(control(TV1), VK_CONTROL, 'F');
    ::SetFocus(inBar(kFindClose));
    click(kFindClose);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(::GetFocus(), control(TV1));
    for (const int id : std::initializer_list<int>{kFindText, kFindNext, kFindPrevious, kFindClose}) {
        find(L"x");
        press(inBar(id), VK_ESCAPE);
        EXPECT_FALSE(isShown()) << id;
    }
    openBar();
    press(inBar(kFindClose), VK_RETURN);
    EXPECT_FALSE(isShown());
}

TEST_F(FindBarTest, IsClosedByEscapeFromTheListAndTheTree) {
    open({L"a/1"});
    for (const int pane : {LV1, TV1}) {
        openBar();
        ::SetFocus(control(pane));
        const MSG message{control(pane), WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
        const auto wantsEscape = [&] {
            return (send(pane, WM_GETDLGCODE, VK_ESCAPE, reinterpret_cast<LPARAM>(&message)) & DLGC_WANTMESSAGE) != 0;
        };
        EXPECT_TRUE(wantsEscape());
        press(control(pane), VK_ESCAPE);
        EXPECT_FALSE(isShown()) << pane;
        EXPECT_EQ(::GetFocus(), control(pane));
        // Without the bar it is the host's again.
        EXPECT_FALSE(wantsEscape());
    }
}

TEST_F(FindBarTest, StaysWhenEscapeAbandonsAnAddress) {
    open({L"a/1"});
    openBar();
    ::SetFocus(edit());
    ::SetWindowTextW(edit(), L"elsewhere");
    press(edit(), VK_ESCAPE);
    EXPECT_EQ(address(), L"a.zip\\");
    EXPECT_TRUE(isShown());
}

TEST_F(FindBarTest, IsOneOfThePanesThatF6GoesTo) {
    open({L"a"});
    find(L"a");
    for (const HWND stop : {edit(), control(TV1), control(kSplitter), control(LV1), field(), edit()}) {
        press(::GetFocus(), VK_F6);
        EXPECT_EQ(::GetFocus(), stop);
    }
    for (const HWND stop : {field(), control(LV1), control(kSplitter), control(TV1)}) {
        pressWith(::GetFocus(), VK_SHIFT, VK_F6);
        EXPECT_EQ(::GetFocus(), stop);
    }
    for (const int id : std::initializer_list<int>{kFindNext, kFindPrevious, kFindClose}) {
        ::SetFocus(inBar(id));
        press(inBar(id), VK_F6);
        EXPECT_EQ(::GetFocus(), edit()) << id;
    }
}

TEST_F(FindBarTest, LeavesTheKeyboardWhereItIsWhenItIsClosedFromElsewhere) {
    open({L"a"});
    openBar();
    ::SetFocus(control(TV1));
    ::SendMessageW(bar(), WM_COMMAND, MAKEWPARAM(kFindClose, BN_CLICKED), 0);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(::GetFocus(), control(TV1));
}

TEST_F(FindBarTest, SelectsItsTextWhenItIsAskedForAgain) {
    open({L"abc"});
    find(L"abc");
    ::SetFocus(control(LV1));
    openBar();
    DWORD start = 9, end = 9;
    ::SendMessageW(field(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0U);
    EXPECT_EQ(end, 3U);
    EXPECT_EQ(::GetFocus(), field());
    ::SendMessageW(field(), EM_SETSEL, 3, 3);
    pressWith(field(), VK_CONTROL, 'F');
    ::SendMessageW(field(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0U);
}

TEST_F(FindBarTest, IsPartOfTheTabOrderWhileItIsShown) {
    open({L"a"});
    ::SetFocus(control(LV1));
    press(control(LV1), VK_TAB);
    EXPECT_NE(::GetParent(::GetFocus()), bar());
    find(L"a");
    for (const int id : std::initializer_list<int>{kFindNext, kFindPrevious, kFindClose}) {
        press(::GetFocus(), VK_TAB);
        EXPECT_EQ(::GetFocus(), inBar(id));
    }
    press(::GetFocus(), VK_TAB);
    EXPECT_NE(::GetParent(::GetFocus()), bar());
    ::SetFocus(inBar(kFindNext));
    pressWith(inBar(kFindNext), VK_SHIFT, VK_TAB);
    EXPECT_EQ(::GetFocus(), field());
    pressWith(field(), VK_SHIFT, VK_TAB);
    EXPECT_EQ(::GetFocus(), control(LV1));
    press(control(LV1), VK_TAB);
    EXPECT_EQ(::GetFocus(), field());
    // A button that is disabled is passed over.
    ::SetWindowTextW(field(), L"");
    press(field(), VK_TAB);
    EXPECT_EQ(::GetFocus(), inBar(kFindClose));
}

TEST_F(FindBarTest, ShowsThatThereIsNone) {
    open({L"a"});
    openBar();
    const COLORREF usual = fieldColour();
    type(L"xyz");
    EXPECT_EQ(state(), L"Not found");
    EXPECT_EQ(fieldColour(), RGB(255, 204, 204));
    EXPECT_NE(fieldColour(), usual);
    ::SetWindowTextW(field(), L"a");
    EXPECT_EQ(state(), L"");
    EXPECT_EQ(fieldColour(), usual);
}

TEST_F(FindBarTest, ShowsThatItWentRound) {
    open({L"x1", L"x2"});
    find(L"x");
    press(field(), VK_RETURN);
    press(field(), VK_RETURN);
    EXPECT_EQ(found(), L"a.zip: x1");
    EXPECT_EQ(state(), L"Continued from the beginning");
    pressWith(field(), VK_SHIFT, VK_RETURN);
    EXPECT_EQ(state(), L"Continued from the end");
}

TEST_F(FindBarTest, TakesNoCharacterForTheKeysOfCommands) {
    open({L"a"});
    find(L"a");
    for (const wchar_t key : {L'\r', L'\n', L'\x1B', L'\t', L'\x06'}) type({&key, 1});
    EXPECT_EQ(textOf(field()), L"a");
}

TEST_F(FindBarTest, KeepsKeysOfTheTextFromTheList) {
    open({L"a", L"b/c"}, L"\\b\\");
    find(L"c");
    press(field(), VK_BACK);  // not: to the folder above
    EXPECT_EQ(selectedFolder(), L"b");
    pressWith(field(), VK_CONTROL, 'A');
    press(inBar(kFindNext), VK_BACK);
    EXPECT_EQ(selectedFolder(), L"b");
}

TEST_F(FindBarTest, TellsADialogThatItTakesItsKeys) {
    open({L"a"});
    openBar();
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        const MSG message{field(), WM_KEYDOWN, key, 0, 0, {}};
        EXPECT_NE(::SendMessageW(field(), WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message)) & DLGC_WANTMESSAGE,
                  0);
    }
}

TEST_F(FindBarTest, BringsTheRowInSightInASortedList) {
    std::vector<std::wstring> names;
    for (int number = 100; number < 400; ++number) names.push_back(L"d/f" + std::to_wstring(number));
    open(names, L"\\d\\");
    ::SendMessageW(window(), WM_NOTIFY, LV1, [&] {
        static NMLISTVIEW click{};
        click.hdr = {control(LV1), LV1, static_cast<UINT>(LVN_COLUMNCLICK)};
        return reinterpret_cast<LPARAM>(&click);
    }());
    ASSERT_EQ(cell(0, 0), L"f399");
    find(L"f123");
    EXPECT_EQ(selectedRows(), std::vector<int>{276});
    EXPECT_TRUE(isInSight(276));
    EXPECT_FALSE(isInSight(0));
    press(field(), VK_F3);
    EXPECT_TRUE(isInSight(276));
}

TEST_F(FindBarTest, LimitsTheLengthOfTheText) {
    open({L"a"});
    openBar();
    EXPECT_EQ(::SendMessageW(field(), EM_GETLIMITTEXT, 0, 0), 260);
}

TEST_F(FindBarTest, DoesNothingBeforeAnArchiveIsShown) {
    create();
    ::SendMessageW(window(), WM_COMMAND, kFind, 0);
    ::SendMessageW(window(), WM_COMMAND, kFindNext, 0);
    EXPECT_EQ(::GetWindowLongPtrW(bar(), GWL_STYLE) & WS_VISIBLE, 0);
}

TEST_F(FindBarTest, DoesNothingWhileTheArchiveIsListed) {
    open({L"x"});
    find(L"y");
    EXPECT_EQ(state(), L"Not found");
    driver_.whileListing = [this] {
        EXPECT_EQ(state(), L"");
        press(field(), VK_RETURN);
        ::SetWindowTextW(field(), L"x");
        EXPECT_EQ(state(), L"");
        EXPECT_TRUE(selectedRows().empty());
    };
    ASSERT_TRUE(browser_->FillControl(L"\\"));
    driver_.whileListing = nullptr;
    EXPECT_TRUE(isShown());
    press(field(), VK_RETURN);
    EXPECT_EQ(found(), L"a.zip: x");
}

TEST_F(FindBarTest, GoesOnBetweenMessages) {
    openManyMembers();
    find(L"member 79999");
    EXPECT_EQ(state(), L"Searching...");
    EXPECT_EQ(found(), L"a.zip: member 7999");  // from before the last letter
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(found(), L"a.zip: member 79999");
    EXPECT_TRUE(isInSight(79'999));
    EXPECT_EQ(state(), L"");
}

TEST_F(FindBarTest, AnswersMessagesWhileItSearches) {
    openManyMembers();
    find(L"nothing");
    ASSERT_EQ(state(), L"Searching...");
    ::SendMessageW(field(), EM_SETSEL, 0, -1);
    type(L"member 7");
    EXPECT_EQ(found(), L"a.zip: member 7");
    EXPECT_EQ(state(), L"");
    ::SetWindowTextW(field(), L"nothing");
    ASSERT_EQ(state(), L"Searching...");
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(state(), L"Not found");
}

TEST_F(FindBarTest, EndsItsSearchWithTheWindow) {
    openManyMembers();
    find(L"nothing");
    ASSERT_EQ(state(), L"Searching...");
    const HWND former = bar();
    browser_->unload();
    EXPECT_FALSE(::IsWindow(former));
    EXPECT_EQ(timesUnloaded_, 1);
    runPendingMessages();
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(FindBarTest, KeepsTheKeyboardWhenTheWindowComesBack) {
    open({L"a"});
    openBar();
    runPendingMessages();
    ::SetFocus(host_);
    ::SetFocus(window());
    EXPECT_EQ(::GetFocus(), field());
    press(field(), VK_ESCAPE);
    ::SetFocus(host_);
    ::SetFocus(window());
    EXPECT_EQ(::GetFocus(), control(LV1));
}

}  // namespace
}  // namespace tovar::test
