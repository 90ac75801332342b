// Extractions that take long: their progress is shown, and they end when the user or a window says so. ZIP stands for
// the libraries that show their progress themselves, ACE for the one whose progress the component shows.

#include <windows.h>
// windows.h first
#include <commctrl.h>

#include "win32/extraction/support/extraction_fixture.h"
#include "win32/system/support/stored_zip.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

class Running : public ExtractionFixture, public testing::WithParamInterface<const char*> {
protected:
    Running() {
        if (isAce()) {
            // It gives data until it is told to stop.
            session_.script("entry name=a.txt original=4000000000\nentry name=b.txt\ndata 4000000000\n");
            libraries.recorded(L"UnAce.dll");
            writeFile(folder, L"some.ace", "whatever");
        } else {
            libraries.bundled(L"UnZip32.dll");
            StoredZip archive(folder / L"some.zip");
            for (int member = 0; member < kMembers; ++member) archive.add(std::to_string(member) + ".txt", "content");
            archive.finish();
        }
        create();
        EXPECT_TRUE(open(folder / (isAce() ? L"some.ace" : L"some.zip")));
    }

    [[nodiscard]] static bool isAce() { return std::string(GetParam()) == "Ace"; }

    /// Extracts all.
    /// @param whileShown  is called once its progress is shown
    void extractUntilShown(const std::function<void(HWND progress)>& whileShown) {
        bool shown = false;
        whileShown_ = [&](HWND progress) {
            shown = true;
            whileShown(progress);
        };
        current_ = this;
        const UnpackDialogUser user([](HWND window) { UnpackControls{window}.press(IDOK); });
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &onTimer);
        if (!isAce()) ::SetWindowSubclass(browser().window(), &slowly, 1, 0);
        command(mnuEditExtract);
        EXPECT_TRUE(waitUntil([&] { return shown && user.done(); }));
        ::KillTimer(nullptr, timer);
        runMessages();
        EXPECT_TRUE(boxes.seen.empty() || browser().isThere()) << "there is nobody to read it";
        EXPECT_FALSE(fs::exists(folder / lastMember())) << "it did not go on to the end";
    }
    [[nodiscard]] static std::wstring lastMember() {
        return isAce() ? L"b.txt" : std::to_wstring(kMembers - 1) + L".txt";
    }
    static void pressCancel(HWND progress) {
        ::PostMessageW(progress, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(progress, IDCANCEL)));
    }

private:
    static constexpr int kMembers = 3000;

    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &onWindow, 0);
    }
    static BOOL CALLBACK onWindow(HWND window, LPARAM) {
        const bool shows = ::FindWindowExW(window, nullptr, PROGRESS_CLASSW, nullptr) != nullptr;
        if (!shows || !::IsWindowVisible(window)) return TRUE;
        if (current_->whileShown_) std::exchange(current_->whileShown_, nullptr)(window);
        return FALSE;
    }
    /// The library tells its owner of each member; until its window is up, each takes a while.
    static LRESULT CALLBACK slowly(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
        static const UINT kOfLibrary = ::RegisterWindowMessageW(L"wm_arcextract");
        constexpr WPARAM kBegins = 0;
        if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, &slowly, id);
        if (message == kOfLibrary && wParam == kBegins && current_->whileShown_) {
            const DWORD begin = ::GetTickCount();
            waitUntil([begin] { return ::GetTickCount() - begin >= 20; });
        }
        return ::DefSubclassProc(window, message, wParam, lParam);
    }

    static inline Running* current_ = nullptr;
    const recording::Session session_;
    std::function<void(HWND)> whileShown_;
};

TEST_P(Running, IsShownAndCanBeCancelled) {
    extractUntilShown([&](HWND progress) {
        EXPECT_FALSE(::IsWindowEnabled(browser().window()) && ::IsWindowEnabled(host.window())) << "it is at work";
        EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(progress, IDCANCEL)));
        if (isAce()) {
            EXPECT_TRUE(textOf(progress).ends_with(L" % Extracting...")) << testing::PrintToString(textOf(progress));
        }
        pressCancel(progress);
    });
    EXPECT_TRUE(browser().isVisible());
    EXPECT_TRUE(::IsWindowEnabled(browser().window()));
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_FALSE(isAce() && fs::exists(folder / L"a.txt")) << "half a file";
}

TEST_P(Running, TurnsOtherCommandsAway) {
    int dialogs = 0;
    extractUntilShown([&](HWND progress) {
        const UnpackDialogUser second([&](HWND) { ++dialogs; });
        command(mnuEditExtract);
        browser().openRow(0);
        runMessages();
        pressCancel(progress);
    });
    EXPECT_EQ(dialogs, 0);
    EXPECT_TRUE(browser().isVisible());
}

TEST_P(Running, LetsCommandsWorkAgainAfterOneThatCameAtItsEnd) {
    // Behind Cancel, so that the library takes both at once and returns.
    extractUntilShown([&](HWND progress) {
        pressCancel(progress);
        command(mnuEditExtract);
    });
    int dialogs = 0;
    extract([&](const UnpackControls& dialog) {
        ++dialogs;
        dialog.press(IDCANCEL);
    });
    EXPECT_EQ(dialogs, 1);
}

TEST_P(Running, EndsWithItsBrowser) {
    extractUntilShown([&](HWND) { browser().close(); });
    EXPECT_FALSE(browser().isThere());
    EXPECT_FALSE(busy());
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

TEST_P(Running, EndsWithItsHost) {
    extractUntilShown([&](HWND) { host.destroy(); });
    EXPECT_FALSE(busy());
}

TEST_P(Running, EndsWithItsObject) {
    extractUntilShown([&](HWND) { object.reset(); });
    EXPECT_FALSE(browser().isThere());
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, Running, testing::Values("Zip", "Ace"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace
}  // namespace tovar::test
