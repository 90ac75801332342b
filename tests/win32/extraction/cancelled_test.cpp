// Windows that go while something is extracted, and commands that come then.

#include <ostream>
#include <vector>

#include "win32/extraction/support/extraction_fixture.h"
#include "win32/system/support/stored_zip.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

/// While a library asks, it runs.
class AskingLibrary : public ExtractionFixture {
protected:
    explicit AskingLibrary(const wchar_t* library) : library_(library) { libraries.bundled(library); }

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
        if (module == nullptr || module != ::GetModuleHandleW(current_->library_) || !::IsWindowVisible(window))
            return TRUE;
        if (current_->question_) std::exchange(current_->question_, nullptr)(window);
        return FALSE;
    }

    static inline AskingLibrary* current_ = nullptr;
    const wchar_t* library_;
    std::function<void(HWND)> question_;
};

/// It asks what shall become of a file that is there already.
class Cancelled : public AskingLibrary {
protected:
    Cancelled() : AskingLibrary(L"UnZip32.dll") {
        StoredZip archive(folder / L"some.zip");
        archive.add("a.txt", "from the archive");
        archive.add("b.txt", "from the archive");
        archive.finish();
        writeFile(folder, L"a.txt", "mine");
        create();
        EXPECT_TRUE(open(folder / L"some.zip"));
    }
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

/// It asks for the password of a member.
struct LockedCase {
    const char* name;
    const wchar_t* library;
    const wchar_t* data;
    std::vector<std::wstring> locked;
};
std::ostream& operator<<(std::ostream& stream, const LockedCase& each) { return stream << each.name; }

class CancelledPassword : public AskingLibrary, public testing::WithParamInterface<LockedCase> {
protected:
    CancelledPassword() : AskingLibrary(GetParam().library) {
        create();
        EXPECT_TRUE(open(copyOfData(GetParam().data)));
    }
};

TEST_P(CancelledPassword, LeavesNothingOfItsMembers) {
    extractUntilAsked([](HWND question) {
        ::PostMessageW(question, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(question, IDCANCEL)));
    });
    for (const std::wstring& member : GetParam().locked) EXPECT_FALSE(fs::exists(folder / member));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_EQ(boxes.seen[0].text, L"User cancel detected while extracting");
    EXPECT_TRUE(browser().isVisible());
    EXPECT_TRUE(::IsWindowEnabled(browser().window()));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, CancelledPassword,
    testing::Values(LockedCase{"Zip", L"UnZip32.dll", L"zip\\zipcrypto.zip", {L"readme.txt", L"docs\\again.txt"}},
                    LockedCase{"ZipAes", L"UnZip32.dll", L"zip\\aes.zip", {L"readme.txt", L"docs\\again.txt"}},
                    LockedCase{"Rar", L"UnRar32.dll", L"rar\\rar_encryption_data.rar", {L"foo.txt", L"bar.txt"}}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::test
