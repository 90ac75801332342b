// Windows that go while something is extracted, and commands that come then.

#include "win32/extraction/support/extraction_fixture.h"
#include "win32/system/support/stored_zip.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

/// While the library asks what shall become of a file that is there already, it runs.
class Cancelled : public ExtractionFixture {
protected:
    Cancelled() {
        libraries.bundled(L"UnZip32.dll");
        StoredZip archive(folder / L"some.zip");
        archive.add("a.txt", "from the archive");
        archive.add("b.txt", "from the archive");
        archive.finish();
        writeFile(folder, L"a.txt", "mine");
        create();
        EXPECT_TRUE(open(folder / L"some.zip"));
    }

    /// Extracts all until the library asks.
    /// @param whileAsked  gets the library's dialog
    void extractUntilAsked(const std::function<void(HWND question)>& whileAsked) {
        bool asked = false;
        const UnpackDialogUser user([](HWND window) { UnpackControls{window}.press(IDOK); });
        question_ = [&](HWND dialog) {
            asked = true;
            whileAsked(dialog);
        };
        current_ = this;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &onTimer);
        command(mnuEditExtract);
        EXPECT_TRUE(waitUntil([&] { return asked && user.done(); }));
        ::KillTimer(nullptr, timer);
        runMessages();
    }

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &onWindow, 0);
    }
    /// The library's own dialogs belong to its module.
    static BOOL CALLBACK onWindow(HWND window, LPARAM) {
        const auto module = reinterpret_cast<HMODULE>(::GetWindowLongPtrW(window, GWLP_HINSTANCE));
        if (module == nullptr || module != ::GetModuleHandleW(L"UnZip32.dll") || !::IsWindowVisible(window))
            return TRUE;
        if (current_->question_) std::exchange(current_->question_, nullptr)(window);
        return FALSE;
    }

    static inline Cancelled* current_ = nullptr;
    std::function<void(HWND)> question_;
};

TEST_F(Cancelled, ByTheUserInTheLibrarysDialog) {
    extractUntilAsked([](HWND question) { ::PostMessageW(question, WM_CLOSE, 0, 0); });
    EXPECT_EQ(contentOf(folder / L"a.txt"), "mine");
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"User cancel detected while extracting");
    EXPECT_TRUE(browser().isVisible());
}

TEST_F(Cancelled, ASecondCommandIsTurnedAway) {
    int dialogs = 0;
    extractUntilAsked([&](HWND question) {
        const UnpackDialogUser second([&](HWND) { ++dialogs; });
        command(mnuEditExtract);
        browser().openRow(0);
        runMessages();
        ::PostMessageW(question, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(dialogs, 0);
    EXPECT_EQ(contentOf(folder / L"a.txt"), "mine");
}

TEST_F(Cancelled, ByClosingTheBrowser) {
    extractUntilAsked([&](HWND) { browser().close(); });
    EXPECT_FALSE(browser().isThere());
    EXPECT_FALSE(busy());
    EXPECT_TRUE(boxes.seen.empty()) << "there is nobody to read it";
    EXPECT_EQ(contentOf(folder / L"a.txt"), "mine");
    EXPECT_FALSE(fs::exists(folder / L"b.txt"));
}

TEST_F(Cancelled, ByClosingTheHost) {
    extractUntilAsked([&](HWND) { host.destroy(); });
    EXPECT_FALSE(busy());
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(contentOf(folder / L"a.txt"), "mine");
}

TEST_F(Cancelled, ByReleasingTheObject) {
    extractUntilAsked([&](HWND) { object.reset(); });
    EXPECT_FALSE(browser().isThere());
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(contentOf(folder / L"a.txt"), "mine");
}

TEST_F(Cancelled, TheDialogGoesWithItsBrowser) {
    extract([&](const UnpackControls&) { browser().close(); });
    EXPECT_FALSE(browser().isThere());
    EXPECT_FALSE(fs::exists(folder / L"b.txt"));
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

TEST_F(Cancelled, TheDialogGoesWithItsHost) {
    extract([&](const UnpackControls&) { host.destroy(); });
    EXPECT_FALSE(busy());
    EXPECT_FALSE(fs::exists(folder / L"b.txt"));
}

TEST_F(Cancelled, TheDialogGoesWithItsObject) {
    extract([&](const UnpackControls&) { object.reset(); });
    EXPECT_FALSE(browser().isThere());
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

}  // namespace
}  // namespace tovar::test
