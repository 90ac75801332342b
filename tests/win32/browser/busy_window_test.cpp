#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "browser/win32/find_bar.h"
#include "win32/browser/browser_fixture.h"

// Work that takes long, and messages that arrive meanwhile, in the real window.
namespace tovar::test {
namespace {

constexpr UINT kProbe = WM_APP + 500;
constexpr std::uint32_t kRows = 80'000;

/// Posts a message to the window at each of the work's breaths, and lets it run.
class PostingBreather final : public Breather {
public:
    HWND target = nullptr;
    std::uint32_t breaths = 0;

    void begin() override {}
    [[nodiscard]] bool breathe() override {
        ++breaths;
        ::PostMessageW(target, kProbe, 0, 0);
        runPendingMessages();
        return true;
    }
};

class BusyWindowTest : public BrowserFixture {
protected:
    void openManyRows(std::uint32_t count = kRows) {
        driver_.members.resize(count);
        for (std::uint32_t number = 0; number < count; ++number) {
            driver_.members[number].storedName = L"member " + std::to_wstring(number);
        }
        browser_ = std::make_unique<fArcMain>(
            BrowserRequest{L"C:\\files\\a.zip", &driver_, L"C:\\work\\", {}},
            BrowserWindowPorts{files_, desktop_, messages_, {}, &actions_, &breather_}, [this] { ++timesUnloaded_; });
        ASSERT_NE(browser_->hWnd(), nullptr);
        placeInHost();
        ASSERT_TRUE(browser_->FillControl(L"\\"));
        browser_->showModeless();
        runPendingMessages();
        breather_.target = window();
        breather_.breaths = 0;
        ASSERT_TRUE(::SetWindowSubclass(window(), &watch, 1, reinterpret_cast<DWORD_PTR>(this)));
    }
    /// As the list tells it.
    void clickHeader(int column) const {
        NMLISTVIEW click{};
        click.hdr = {control(LV1), LV1, static_cast<UINT>(LVN_COLUMNCLICK)};
        click.iItem = -1;
        click.iSubItem = column;
        ::SendMessageW(window(), WM_NOTIFY, LV1, reinterpret_cast<LPARAM>(&click));
    }
    [[nodiscard]] bool hasSortArrow() const {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header(), HDM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return (item.fmt & (HDF_SORTUP | HDF_SORTDOWN)) != 0;
    }

    PostingBreather breather_;
    std::function<void()> onProbe_;
    std::uint32_t probes_ = 0;

private:
    static LRESULT CALLBACK watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
        auto& test = *reinterpret_cast<BusyWindowTest*>(data);
        if (message == kProbe) {
            ++test.probes_;
            if (test.onProbe_) test.onProbe_();
        }
        return ::DefSubclassProc(window, message, wParam, lParam);
    }
};

TEST_F(BusyWindowTest, HandlesMessagesWhileItSorts) {
    openManyRows();
    std::uint32_t whileSorting = 0;
    onProbe_ = [&] {
        if (!hasSortArrow()) ++whileSorting;
        // What is seen until then is what was there before.
        EXPECT_EQ(rowCount(), static_cast<int>(kRows));
        EXPECT_EQ(cell(7, 0), L"member 7");
    };
    clickHeader(0);
    runPendingMessages();
    EXPECT_TRUE(hasSortArrow());
    EXPECT_EQ(cell(0, 0), L"member 9999");
    EXPECT_GE(whileSorting, 5U);
    EXPECT_EQ(probes_, breather_.breaths);
}

TEST_F(BusyWindowTest, TurnsOtherWorkAwayWhileItSorts) {
    openManyRows();
    onProbe_ = [&] {
        clickHeader(1);
        ::SendMessageW(window(), WM_COMMAND, kRefresh, 0);
        ::SendMessageW(window(), WM_COMMAND, mnuViewStyleExactDetails, 0);
    };
    clickHeader(0);
    runPendingMessages();
    EXPECT_GE(probes_, 5U);
    onProbe_ = nullptr;
    runPendingMessages();
    EXPECT_EQ(cell(0, 0), L"member 9999");
    EXPECT_EQ(driver_.listed.size(), 1U);
}

TEST_F(BusyWindowTest, IsClosedWhileItSorts) {
    openManyRows();
    onProbe_ = [&] {
        if (probes_ == 2) ::SendMessageW(window(), WM_CLOSE, 0, 0);
    };
    const HWND former = window();
    clickHeader(0);
    runPendingMessages();
    EXPECT_FALSE(::IsWindow(former));
    EXPECT_EQ(timesUnloaded_, 1);
    EXPECT_EQ(probes_, 2U) << "the sort ends with the window";
}

TEST_F(BusyWindowTest, HandlesMessagesWhileItSelectsAndInverts) {
    openManyRows(24'000);
    const std::pair<BrowserCommand, std::wstring> work[] = {
        {mnuEditSelectAll, L"24000 Objects are selected."},
        {mnuEditSelectInvert, L"0 Objects are selected."},
        {mnuEditSelectInvert, L"24000 Objects are selected."},
    };
    for (const auto& [command, text] : work) {
        std::uint32_t meanwhile = 0;
        onProbe_ = [&, &wanted = text] { meanwhile += status() != wanted ? 1 : 0; };
        ::SendMessageW(window(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        runPendingMessages();
        EXPECT_EQ(status(), text);
        EXPECT_GE(meanwhile, 5U) << command;
    }
    EXPECT_EQ(probes_, breather_.breaths);
}

TEST_F(BusyWindowTest, HandlesMessagesWhileItSearches) {
    openManyRows();
    ::SendMessageW(window(), WM_COMMAND, kFind, 0);
    const HWND bar = control(kFindBar);
    ::SetWindowTextW(::GetDlgItem(bar, kFindText), L"nothing");
    const auto isSearching = [&] { return textOf(::GetDlgItem(bar, kFindState)) == L"Searching..."; };
    ASSERT_TRUE(isSearching());
    std::uint32_t whileSearching = 0;
    onProbe_ = [&] { whileSearching += isSearching() ? 1 : 0; };
    std::uint32_t posted = 0;
    for (; isSearching() && posted < 10'000; ++posted) {
        ::PostMessageW(window(), kProbe, 0, 0);
        MSG message;
        while (::PeekMessageW(&message, window(), kProbe, kProbe, PM_REMOVE)) ::DispatchMessageW(&message);
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        runPendingMessages();
    }
    EXPECT_FALSE(isSearching());
    EXPECT_EQ(probes_, posted);
    EXPECT_GE(whileSearching, 1U);
}

}  // namespace
}  // namespace tovar::test
