#include <gtest/gtest.h>

#include <functional>

#include "archivers/commands/library_settings.h"
#include "archivers/commands/win32/settings_dialog.h"
#include "win32/commands/host_window.h"

namespace archiver {
namespace {

using testing::HostWindow;
using testing::OnDialog;

constexpr char kLibrary[] = "TestLibrary32";
constexpr wchar_t kKey[] = L"Software\\TovarEx\\Archivers\\TestLibrary32";

class LibrarySettingsTest : public ::testing::Test {
protected:
    LibrarySettingsTest() { ::RegDeleteKeyW(HKEY_CURRENT_USER, kKey); }
    ~LibrarySettingsTest() override { ::RegDeleteKeyW(HKEY_CURRENT_USER, kKey); }

    static void write(const wchar_t* name, DWORD type, const void* data, DWORD size) {
        HKEY key = nullptr;
        ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(::RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), size), ERROR_SUCCESS);
        ::RegCloseKey(key);
    }
    static void writeNumber(const wchar_t* name, DWORD number) { write(name, REG_DWORD, &number, sizeof number); }
    static DWORD readNumber(const wchar_t* name) {
        DWORD number = 0xDEAD, size = sizeof number;
        ::RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_DWORD, nullptr, &number, &size);
        return number;
    }
};

TEST_F(LibrarySettingsTest, AreTheDefaultsAtFirst) {
    const LibrarySettings settings = loadLibrarySettings(kLibrary);
    EXPECT_TRUE(settings.showProgress);
    EXPECT_EQ(settings.processors, 0U);
}

TEST_F(LibrarySettingsTest, AreKeptForTheUser) {
    EXPECT_TRUE(storeLibrarySettings(kLibrary, {false, 3}));
    EXPECT_EQ(readNumber(L"ShowProgress"), 0U);
    EXPECT_EQ(readNumber(L"Processors"), 3U);
    EXPECT_EQ(loadLibrarySettings(kLibrary), (LibrarySettings{false, 3}));
}

TEST_F(LibrarySettingsTest, TakeNothingThatIsOutOfRange) {
    writeNumber(L"ShowProgress", 5);
    writeNumber(L"Processors", 17);
    EXPECT_EQ(loadLibrarySettings(kLibrary), (LibrarySettings{true, 0}));
    writeNumber(L"Processors", 16);
    EXPECT_EQ(loadLibrarySettings(kLibrary), (LibrarySettings{true, 16}));
}

TEST_F(LibrarySettingsTest, TakeNothingOfAnotherType) {
    write(L"ShowProgress", REG_SZ, L"0", 4);
    const std::uint64_t wide = 2;
    write(L"Processors", REG_QWORD, &wide, sizeof wide);
    EXPECT_EQ(loadLibrarySettings(kLibrary), LibrarySettings{});
    write(L"Processors", REG_DWORD, &wide, 2);
    EXPECT_EQ(loadLibrarySettings(kLibrary), LibrarySettings{});
}

class SettingsDialogTest : public LibrarySettingsTest {
protected:
    bool configure(const std::function<void(HWND dialog)>& act, HWND owner) {
        const OnDialog user(act);
        return configureLibrary(owner, kLibrary);
    }
    bool configure(const std::function<void(HWND dialog)>& act) { return configure(act, host.window()); }

    HostWindow host;
};

void clickProgress(HWND dialog) { ::SendMessageW(::GetDlgItem(dialog, SettingsDialog::kProgress), BM_CLICK, 0, 0); }
void choose(HWND dialog, int row) {
    ::SendMessageW(::GetDlgItem(dialog, SettingsDialog::kProcessors), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
}
void finish(HWND dialog, WORD button) { ::PostMessageW(::GetDlgItem(dialog, button), BM_CLICK, 0, 0); }

TEST_F(SettingsDialogTest, KeepsWhatTheUserConfirms) {
    EXPECT_TRUE(configure([](HWND dialog) {
        EXPECT_EQ(testing::textOf(dialog), L"Settings of TestLibrary32");
        clickProgress(dialog);
        choose(dialog, 1);
        finish(dialog, IDOK);
    }));
    EXPECT_EQ(loadLibrarySettings(kLibrary), (LibrarySettings{false, 1}));
}

TEST_F(SettingsDialogTest, ShowsWhatIsSet) {
    ASSERT_TRUE(storeLibrarySettings(kLibrary, {false, 16}));
    configure([](HWND dialog) {
        EXPECT_EQ(::SendMessageW(::GetDlgItem(dialog, SettingsDialog::kProgress), BM_GETCHECK, 0, 0), BST_UNCHECKED);
        EXPECT_EQ(testing::textOf(::GetDlgItem(dialog, SettingsDialog::kProcessors)), L"16");
        finish(dialog, IDCANCEL);
    });
}

TEST_F(SettingsDialogTest, ForgetsWhatTheUserCancels) {
    EXPECT_FALSE(configure([](HWND dialog) {
        clickProgress(dialog);
        finish(dialog, IDCANCEL);
    }));
    EXPECT_FALSE(configure([](HWND dialog) {
        clickProgress(dialog);
        testing::pressKey(VK_ESCAPE);
    }));
    EXPECT_EQ(loadLibrarySettings(kLibrary), LibrarySettings{});
}

TEST_F(SettingsDialogTest, IsNoChangeWhenNothingIsDifferent) {
    EXPECT_FALSE(configure([](HWND dialog) {
        clickProgress(dialog);
        clickProgress(dialog);
        finish(dialog, IDOK);
    }));
    EXPECT_EQ(readNumber(L"ShowProgress"), 0xDEADU);  // and nothing was written
}

TEST_F(SettingsDialogTest, GoesByTheKeyboardAlone) {
    EXPECT_TRUE(configure([](HWND dialog) {
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog, SettingsDialog::kProgress));
        testing::pressKey(VK_SPACE);
        testing::pressKey(VK_RETURN);
    }));
    EXPECT_FALSE(loadLibrarySettings(kLibrary).showProgress);
}

TEST_F(SettingsDialogTest, NeedsNoOwner) {
    EXPECT_FALSE(configure([](HWND dialog) { finish(dialog, IDCANCEL); }, nullptr));
}

TEST_F(SettingsDialogTest, DisablesItsOwnerMeanwhile) {
    configure([this](HWND dialog) {
        EXPECT_FALSE(::IsWindowEnabled(host.window()));
        finish(dialog, IDCANCEL);
    });
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

}  // namespace
}  // namespace archiver
