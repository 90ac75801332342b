#include "archivers/commands/win32/password_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "archivers/commands/win32/windows_dialogs.h"
#include "win32/commands/host_window.h"

namespace archiver {
namespace {

using testing::HostWindow;
using testing::OnDialog;

HWND edit(HWND dialog) { return ::GetDlgItem(dialog, PasswordDialog::kEdit); }
HWND button(HWND dialog, WORD id) { return ::GetDlgItem(dialog, id); }

class PasswordDialogTest : public ::testing::Test {
protected:
    PasswordDialogTest() {
        settings.owner = host.window();
        settings.title = "UnZip32";
        member.name = "docs/secret.txt";
    }

    std::optional<std::string> ask(const std::function<void(HWND dialog)>& act, unsigned attempt = 1) {
        WindowsDialogs dialogs(settings, [] { return ProgressTime{0}; });
        const OnDialog user(act);
        return dialogs.askPassword(L"C:\\a.zip", member, attempt);
    }

    HostWindow host;
    DialogSettings settings;
    Member member;
};

TEST_F(PasswordDialogTest, GivesWhatWasTyped) {
    EXPECT_EQ(ask([](HWND dialog) {
                  ::SetWindowTextW(edit(dialog), L"p\x00E4ss \x30C6");
                  ::PostMessageW(button(dialog, IDOK), BM_CLICK, 0, 0);
              }),
              "p\xC3\xA4ss \xE3\x83\x86");
}

TEST_F(PasswordDialogTest, GoesByTheKeyboardAlone) {
    EXPECT_EQ(ask([](HWND dialog) {
                  EXPECT_EQ(::GetFocus(), edit(dialog));
                  for (const wchar_t each : {L'k', L'e', L'y'}) ::PostMessageW(edit(dialog), WM_CHAR, each, 1);
                  testing::pressKey(VK_RETURN);
              }),
              "key");
}

TEST_F(PasswordDialogTest, IsCancelled) {
    EXPECT_EQ(ask([](HWND dialog) {
                  ::SetWindowTextW(edit(dialog), L"x");
                  ::PostMessageW(button(dialog, IDCANCEL), BM_CLICK, 0, 0);
              }),
              std::nullopt);
    EXPECT_EQ(ask([](HWND dialog) {
                  ::SetWindowTextW(edit(dialog), L"x");
                  testing::pressKey(VK_ESCAPE);
              }),
              std::nullopt);
    EXPECT_EQ(ask([](HWND dialog) { ::PostMessageW(dialog, WM_CLOSE, 0, 0); }), std::nullopt);
}

TEST_F(PasswordDialogTest, TakesNoEmptyPassword) {
    ask([](HWND dialog) {
        EXPECT_FALSE(::IsWindowEnabled(button(dialog, IDOK)));
        ::SetWindowTextW(edit(dialog), L"x");
        EXPECT_TRUE(::IsWindowEnabled(button(dialog, IDOK)));
        ::SetWindowTextW(edit(dialog), L"");
        EXPECT_FALSE(::IsWindowEnabled(button(dialog, IDOK)));
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);  // Return does nothing either
        EXPECT_TRUE(::IsWindowVisible(dialog));
        ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

TEST_F(PasswordDialogTest, IsRememberedAsDeclinedByTheUserAlone) {
    WindowsDialogs dialogs(settings, [] { return ProgressTime{0}; });
    EXPECT_FALSE(dialogs.passwordDeclined());
    {
        const OnDialog user([](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
        EXPECT_EQ(dialogs.askPassword(L"C:\\a.zip", member, 1), std::nullopt);
    }
    EXPECT_TRUE(dialogs.passwordDeclined());

    settings.owner = nullptr;
    WindowsDialogs unasked(settings, [] { return ProgressTime{0}; });
    EXPECT_EQ(unasked.askPassword(L"C:\\a.zip", member, 1), std::nullopt);
    EXPECT_FALSE(unasked.passwordDeclined());
}

TEST_F(PasswordDialogTest, TakesTheLongestPassword) {
    EXPECT_EQ(ask([](HWND dialog) {
                  EXPECT_EQ(::SendMessageW(edit(dialog), EM_GETLIMITTEXT, 0, 0), 255);
                  ::SetWindowTextW(edit(dialog), std::wstring(255, L'\x30C6').c_str());
                  ::SendMessageW(edit(dialog), WM_CHAR, L'x', 1);  // one more is not taken
                  ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
              })->size(),
              255U * 3);
}

TEST_F(PasswordDialogTest, HidesThePasswordUnlessTheUserWantsToSeeIt) {
    ask([](HWND dialog) {
        const HWND show = button(dialog, PasswordDialog::kShow);
        const LRESULT hiding = ::SendMessageW(edit(dialog), EM_GETPASSWORDCHAR, 0, 0);
        EXPECT_NE(hiding, 0);
        ::SendMessageW(show, BM_CLICK, 0, 0);
        EXPECT_EQ(::SendMessageW(edit(dialog), EM_GETPASSWORDCHAR, 0, 0), 0);
        ::SendMessageW(show, BM_CLICK, 0, 0);
        EXPECT_EQ(::SendMessageW(edit(dialog), EM_GETPASSWORDCHAR, 0, 0), hiding);
        ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

std::vector<std::wstring> textsOf(HWND dialog) {
    std::vector<std::wstring> texts = testing::childTexts(dialog);
    ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    return texts;
}

TEST_F(PasswordDialogTest, TellsWhatThePasswordIsFor) {
    std::vector<std::wstring> texts;
    ask([&](HWND dialog) { texts = textsOf(dialog); });
    EXPECT_EQ(texts, (std::vector<std::wstring>{L"Enter the password for an encrypted file.", L"Archive:", L"C:\\a.zip",
                                                L"File:", L"docs/secret.txt", L"&Password:", L"", L"&Show the password",
                                                L"OK", L"Cancel"}));
}

TEST_F(PasswordDialogTest, TellsFromTheSecondTimeOnThatThePasswordWasWrong) {
    for (const unsigned attempt : {2U, 3U}) {
        std::vector<std::wstring> texts;
        ask([&](HWND dialog) { texts = textsOf(dialog); }, attempt);
        ASSERT_EQ(texts.size(), 11U);
        EXPECT_EQ(texts[5], L"The last password was wrong.");
    }
}

// "Xq7!vR#2mZ" as the edit control holds it, each unit with all bits turned: this program's memory must not hold it.
constexpr wchar_t kTurned[] = {0xFFA7, 0xFF8E, 0xFFC8, 0xFFDE, 0xFF89, 0xFFAD, 0xFFDC, 0xFFCD, 0xFF92, 0xFFA5};

bool isPattern(const wchar_t* place) {
    for (std::size_t index = 0; index < std::size(kTurned); ++index) {
        if (static_cast<wchar_t>(~place[index]) != kTurned[index]) return false;
    }
    return true;
}

/// How often the text stands in the memory that this process can write.
int copiesInMemory() {
    int copies = 0;
    MEMORY_BASIC_INFORMATION region;
    for (const char* place = nullptr; ::VirtualQuery(place, &region, sizeof region) == sizeof region;
         place = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State != MEM_COMMIT || region.Protect != PAGE_READWRITE) continue;
        const auto* const begin = static_cast<const wchar_t*>(region.BaseAddress);
        const auto* const end = begin + region.RegionSize / sizeof(wchar_t) - std::size(kTurned);
        for (const wchar_t* each = begin; each <= end; ++each) copies += isPattern(each) ? 1 : 0;
    }
    return copies;
}

TEST_F(PasswordDialogTest, LeavesNoCopyOfThePasswordBehind) {
    int during = 0;
    const std::optional<std::string> password = ask([&](HWND dialog) {
        for (const wchar_t turned : kTurned) {
            ::SendMessageW(edit(dialog), WM_CHAR, static_cast<wchar_t>(~turned), 1);
        }
        during = copiesInMemory();
        ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(password, "Xq7!vR#2mZ");
    EXPECT_GE(during, 1);  // the search finds what is there
    EXPECT_EQ(copiesInMemory(), 0);
}

TEST_F(PasswordDialogTest, LeavesNoCopyBehindWhenCancelled) {
    ask([&](HWND dialog) {
        for (const wchar_t turned : kTurned) {
            ::SendMessageW(edit(dialog), WM_CHAR, static_cast<wchar_t>(~turned), 1);
        }
        ::PostMessageW(dialog, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(copiesInMemory(), 0);
}

}  // namespace
}  // namespace archiver
