#include "archivers/commands/win32/progress_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "archivers/commands/win32/windows_dialogs.h"
#include "win32/commands/host_window.h"

namespace archiver {
namespace {

using namespace std::chrono_literals;
using testing::frontDialog;
using testing::HostWindow;

constexpr std::uint64_t kMega = 1024 * 1024;

/// A command that works by a clock of the test's.
class ProgressWindowTest : public ::testing::Test {
protected:
    ProgressWindowTest() {
        settings.owner = host.window();
        settings.archive = L"C:\\archives\\photos.zip";
        settings.title = "UnZip32";
        member.name = "docs/read me.txt";
        state.member = &member;
        state.totalBytes = 40 * kMega;
    }
    ~ProgressWindowTest() override {
        dialogs.reset();
        testing::runMessages();
    }

    void begin() {
        dialogs.emplace(settings, [this] { return now; });
    }
    bool at(ProgressTime time, std::uint64_t bytes = 0) {
        now = time;
        state.bytes = bytes;
        return dialogs->progress(state);
    }
    /// Begins, and works until the window is there.
    HWND shown() {
        begin();
        EXPECT_TRUE(at(0ms));
        EXPECT_TRUE(at(500ms, 10 * kMega));
        EXPECT_NE(frontDialog(), nullptr);
        return frontDialog();
    }

    HostWindow host;
    DialogSettings settings;
    Member member;
    UnpackProgress state;
    ProgressTime now{0};
    std::optional<WindowsDialogs> dialogs;
};

TEST_F(ProgressWindowTest, AppearsAfterHalfASecond) {
    begin();
    EXPECT_TRUE(at(1000ms));
    EXPECT_TRUE(at(1250ms));
    EXPECT_TRUE(at(1499ms));
    EXPECT_EQ(frontDialog(), nullptr);
    EXPECT_TRUE(at(1510ms));
    EXPECT_NE(frontDialog(), nullptr);
    dialogs.reset();
    EXPECT_EQ(frontDialog(), nullptr);
}

TEST_F(ProgressWindowTest, NeverAppearsWithoutAnOwner) {
    settings.owner = nullptr;
    begin();
    EXPECT_TRUE(at(0ms));
    EXPECT_TRUE(at(10'000ms));
    EXPECT_EQ(frontDialog(), nullptr);
}

TEST_F(ProgressWindowTest, NeverAppearsWhereItIsNotWanted) {
    settings.showProgress = false;
    begin();
    EXPECT_TRUE(at(0ms));
    EXPECT_TRUE(at(10'000ms));
    EXPECT_EQ(frontDialog(), nullptr);
}

TEST_F(ProgressWindowTest, ShowsHowFarTheWorkIs) {
    const HWND window = shown();
    EXPECT_TRUE(at(2000ms, 20 * kMega));
    EXPECT_EQ(testing::textOf(window), L"50% - UnZip32");
    EXPECT_EQ(
        testing::childTexts(window),
        (std::vector<std::wstring>{L"Archive:", L"C:\\archives\\photos.zip", L"File:", L"docs/read me.txt", L"",
                                   L"20.0 MB of 40.0 MB", L"10.0 MB/s", L"About 2 seconds remaining", L"Cancel"}));
    const HWND bar = ::FindWindowExW(window, nullptr, PROGRESS_CLASSW, nullptr);
    EXPECT_EQ(::SendMessageW(bar, PBM_GETPOS, 0, 0), 500);
}

TEST_F(ProgressWindowTest, ChangesTenTimesASecondAtMost) {
    const HWND window = shown();
    EXPECT_TRUE(at(599ms, 30 * kMega));
    EXPECT_EQ(testing::textOf(window), L"25% - UnZip32");
    EXPECT_TRUE(at(600ms, 30 * kMega));  // within the same 10 ms: nothing is looked at
    EXPECT_EQ(testing::textOf(window), L"25% - UnZip32");
    EXPECT_TRUE(at(610ms, 30 * kMega));
    EXPECT_EQ(testing::textOf(window), L"75% - UnZip32");
}

TEST_F(ProgressWindowTest, ShortensLongNamesInTheirMiddle) {
    settings.archive = L"C:\\" + std::wstring(200, L'a') + L"\\photos.zip";
    member.name = std::string(300, 'b') + "/" + std::string(300, 'c');
    const std::vector<std::wstring> texts = testing::childTexts(shown());
    ASSERT_EQ(texts.size(), 9U);
    EXPECT_EQ(texts[1].substr(0, 4), L"C:\\a");
    EXPECT_EQ(texts[1].substr(texts[1].find(L'.')), L"...\\photos.zip");
    EXPECT_LT(texts[1].size(), 100U);
    EXPECT_EQ(texts[3].front(), L'b');
    EXPECT_NE(texts[3].find(L"..."), std::wstring::npos);
    EXPECT_EQ(texts[3].back(), L'c');
}

TEST_F(ProgressWindowTest, ShowsAnAmpersandAsItIs) {
    member.name = "this & that.txt";
    const HWND name = testing::childWithText(shown(), L"this & that.txt");
    ASSERT_NE(name, nullptr);
    EXPECT_NE(::GetWindowLongW(name, GWL_STYLE) & SS_NOPREFIX, 0);
}

TEST_F(ProgressWindowTest, StandsOverItsOwnerWithinTheMonitor) {
    RECT place;
    ::GetWindowRect(shown(), &place);
    EXPECT_NEAR((place.left + place.right) / 2, 500, 1);
    EXPECT_NEAR((place.top + place.bottom) / 2, 400, 1);
    dialogs.reset();

    ::SetWindowPos(host.window(), nullptr, -700, -500, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ::GetWindowRect(shown(), &place);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.top, 0);
}

TEST_F(ProgressWindowTest, IsCancelledByAClick) {
    const HWND window = shown();
    ::PostMessageW(::GetDlgItem(window, IDCANCEL), BM_CLICK, 0, 0);
    EXPECT_FALSE(at(510ms));
    EXPECT_FALSE(at(511ms));
    EXPECT_FALSE(at(1000ms));  // for good
    EXPECT_EQ(testing::textOf(::GetDlgItem(window, IDCANCEL)), L"Cancelling...");
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(window, IDCANCEL)));
}

TEST_F(ProgressWindowTest, IsCancelledByEsc) {
    const HWND window = shown();
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(window, IDCANCEL));
    testing::pressKey(VK_ESCAPE);
    EXPECT_FALSE(at(510ms));
}

TEST_F(ProgressWindowTest, IsCancelledByItsCloseBox) {
    ::PostMessageW(shown(), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_FALSE(at(510ms));
}

TEST_F(ProgressWindowTest, IsCancelledAlsoWhereOtherMessagesWait) {
    settings.pumpMessages = false;
    ::PostMessageW(shown(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(at(510ms));
}

TEST_F(ProgressWindowTest, LetsOtherWindowsLive) {
    begin();
    ::PostMessageW(host.window(), WM_APP + 1, 0, 0);
    EXPECT_TRUE(at(0ms));  // before it is there already
    EXPECT_EQ(host.told(WM_APP + 1), 1);
    EXPECT_TRUE(at(500ms));
    ::PostMessageW(host.window(), WM_APP + 1, 0, 0);
    EXPECT_TRUE(at(510ms));
    EXPECT_EQ(host.told(WM_APP + 1), 2);
}

TEST_F(ProgressWindowTest, LetsOtherMessagesWaitWhereTheHostWantsThat) {
    settings.pumpMessages = false;
    shown();
    ::PostMessageW(host.window(), WM_APP + 1, 0, 0);
    EXPECT_TRUE(at(510ms));
    EXPECT_EQ(host.told(WM_APP + 1), 0);
    dialogs.reset();
    testing::runMessages();
    EXPECT_EQ(host.told(WM_APP + 1), 1);
}

/// @return the exit code of the waiting message that ends the thread's loop
std::optional<WPARAM> waitingQuit() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) return message.wParam;
    }
    return std::nullopt;
}

TEST_F(ProgressWindowTest, TakesTheEndOfTheThreadForCancelAndPassesItOn) {
    begin();
    EXPECT_TRUE(at(0ms));
    ::PostQuitMessage(7);
    EXPECT_FALSE(at(10ms));
    EXPECT_FALSE(at(20ms));
    EXPECT_EQ(waitingQuit(), WPARAM{7});
}

TEST_F(ProgressWindowTest, PassesTheEndOfTheThreadOnWhereOtherMessagesWait) {
    settings.pumpMessages = false;
    shown();
    ::PostQuitMessage(7);
    at(510ms);
    at(520ms);
    EXPECT_EQ(waitingQuit(), WPARAM{7});
}

TEST_F(ProgressWindowTest, IsCancelledWhenItsOwnerGoes) {
    shown();
    ::DestroyWindow(host.window());
    EXPECT_FALSE(at(510ms));
    EXPECT_EQ(frontDialog(), nullptr);
}

TEST_F(ProgressWindowTest, DoesNotWaitForAWindowThatNeverPaints) {
    host.answer(WM_PAINT, 0);
    ::InvalidateRect(host.window(), nullptr, FALSE);
    begin();
    EXPECT_TRUE(at(0ms));
    EXPECT_GT(host.told(WM_PAINT), 1);
    ::ValidateRect(host.window(), nullptr);
}

TEST_F(ProgressWindowTest, GivesItsOwnerTheFocusBack) {
    ASSERT_EQ(::GetFocus(), host.edit());
    shown();
    EXPECT_FALSE(::IsWindowEnabled(host.window()));
    EXPECT_NE(::GetFocus(), host.edit());
    dialogs.reset();
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_EQ(::GetActiveWindow(), host.window());
    EXPECT_EQ(::GetFocus(), host.edit());
}

TEST_F(ProgressWindowTest, GoesAfterAnError) {
    EXPECT_THROW(
        {
            WindowsDialogs early(settings, [this] { return now; });
            early.progress(state);
            now = 600ms;
            early.progress(state);
            EXPECT_NE(frontDialog(), nullptr);
            throw std::runtime_error("early end");
        },
        std::runtime_error);
    EXPECT_EQ(frontDialog(), nullptr);
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_EQ(::GetFocus(), host.edit());
}

TEST_F(ProgressWindowTest, DoesNotTakeTheUserFromAnotherWindow) {
    const HostWindow other({500, 300, 700, 400});
    ::SetForegroundWindow(other.window());
    ::SetFocus(other.edit());
    const HWND window = shown();
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_EQ(::GetFocus(), other.edit());
}

TEST_F(ProgressWindowTest, DoesNotCountAQuestion) {
    begin();
    EXPECT_TRUE(at(0ms));
    EXPECT_TRUE(at(300ms));
    {
        testing::OnDialog user([this](HWND dialog) {
            now = 60'000ms;
            ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
        EXPECT_TRUE(dialogs->askDiskSpace(2, 1));
    }
    EXPECT_TRUE(at(60'150ms));
    EXPECT_EQ(frontDialog(), nullptr);
    EXPECT_TRUE(at(60'210ms));
    EXPECT_NE(frontDialog(), nullptr);
}

TEST_F(ProgressWindowTest, IsBelowAQuestion) {
    const HWND window = shown();
    testing::OnDialog user([&](HWND dialog) {
        EXPECT_NE(dialog, window);
        EXPECT_EQ(::GetWindow(dialog, GW_OWNER), window);
        EXPECT_FALSE(::IsWindowEnabled(window));
        ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_FALSE(dialogs->askDiskSpace(2, 1));
    EXPECT_TRUE(::IsWindowEnabled(window));
    EXPECT_TRUE(at(700ms));
}

}  // namespace
}  // namespace archiver
