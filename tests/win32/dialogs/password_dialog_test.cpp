#include "browser/win32/password_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <optional>

#include "browser/win32/dialog_passwords.h"
#include "win32/dialogs/work_dialogs.h"

namespace tovar::test {
namespace {

HWND entry(HWND dialog) { return item(dialog, IDC_TXT_PASSWORD); }
HWND ok(HWND dialog) { return item(dialog, IDOK); }
void cancel(HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); }
void click(HWND dialog, int id) { ::PostMessageW(item(dialog, id), BM_CLICK, 0, 0); }

class PasswordDialogTest : public testing::Test {
protected:
    struct Answer {
        std::wstring password;
        bool cancelled = false;
    };

    Answer ask(std::function<void(HWND dialog)> act, const std::wstring& font = {}) {
        fArcPassword dialog(archive);
        const OnDialog user(std::move(act));
        dialog.ask(host->child(), font);
        return {dialog.Password(), dialog.Cancelled()};
    }
    void expectCancelled(std::function<void(HWND dialog)> act) {
        const Answer answer = ask(std::move(act));
        EXPECT_TRUE(answer.cancelled);
        EXPECT_EQ(answer.password, L"");
        EXPECT_TRUE(::IsWindowEnabled(host->window()));
    }

    std::wstring archive = L"C:\\Docs & More\\secret.ace";
    std::optional<HostWindow> host{std::in_place};
};

TEST_F(PasswordDialogTest, GivesWhatWasTyped) {
    const Answer answer = ask([](HWND dialog) {
        ::SetWindowTextW(entry(dialog), L" p\x00E4ss \x30C6 ");
        click(dialog, IDOK);
    });
    EXPECT_EQ(answer.password, L" p\x00E4ss \x30C6 ");
    EXPECT_FALSE(answer.cancelled);
}

TEST_F(PasswordDialogTest, GoesByTheKeyboardAlone) {
    const Answer answer = ask([](HWND dialog) {
        EXPECT_EQ(::GetFocus(), entry(dialog));
        for (const wchar_t each : {L'k', L'e', L'y'}) ::PostMessageW(entry(dialog), WM_CHAR, each, 1);
        pressKey(VK_RETURN);
    });
    EXPECT_EQ(answer.password, L"key");
}

TEST_F(PasswordDialogTest, TakesTheCharactersOfEveryKeyboardLayout) {
    // Cyrillic, Greek, Hebrew, and one beyond the first plane: none of them is in this process's code page.
    const std::wstring typed = L"\x043F\x0430\x03C0\x05D0\xD83D\xDD11";
    const Answer answer = ask([&](HWND dialog) {
        for (const wchar_t each : typed) ::PostMessageW(entry(dialog), WM_CHAR, each, 1);
        pressKey(VK_RETURN);
    });
    EXPECT_EQ(answer.password, typed);
}

TEST_F(PasswordDialogTest, IsCancelledByItsButton) {
    expectCancelled([](HWND dialog) {
        ::SetWindowTextW(entry(dialog), L"x");
        click(dialog, IDCANCEL);
    });
}

TEST_F(PasswordDialogTest, IsCancelledByEscape) {
    expectCancelled([](HWND dialog) {
        ::SetWindowTextW(entry(dialog), L"x");
        pressKey(VK_ESCAPE);
    });
}

TEST_F(PasswordDialogTest, IsCancelledByTheCloseBox) {
    expectCancelled([](HWND dialog) {
        ::SetWindowTextW(entry(dialog), L"x");
        ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    });
}

TEST_F(PasswordDialogTest, IsCancelledWhenItsHostGoes) {
    fArcPassword dialog(archive);
    const OnDialog user([this](HWND) { host.reset(); });
    dialog.ask(host->window(), L"");
    EXPECT_TRUE(dialog.Cancelled());
    EXPECT_EQ(dialog.Password(), L"");
}

TEST_F(PasswordDialogTest, CountsAsCancelledWhenItCannotBeShown) {
    fArcPassword dialog(archive);
    const HWND gone = host->window();
    host.reset();
    dialog.ask(gone, L"");
    EXPECT_TRUE(dialog.Cancelled());
}

TEST_F(PasswordDialogTest, KeepsTheLastConfirmedEntryWhenCancelledLater) {
    fArcPassword dialog(archive);
    {
        const OnDialog user([](HWND window) {
            ::SetWindowTextW(entry(window), L"first");
            click(window, IDOK);
        });
        dialog.ask(host->child(), L"");
    }
    EXPECT_FALSE(dialog.Cancelled());
    const OnDialog user([](HWND window) {
        EXPECT_EQ(textOf(entry(window)), L"");
        EXPECT_FALSE(::IsWindowEnabled(ok(window)));
        ::SetWindowTextW(entry(window), L"second");
        cancel(window);
    });
    dialog.ask(host->child(), L"");
    EXPECT_TRUE(dialog.Cancelled());
    EXPECT_EQ(dialog.Password(), L"first");
}

TEST_F(PasswordDialogTest, EnablesOkExactlyWhileThereIsText) {
    ask([](HWND dialog) {
        EXPECT_FALSE(::IsWindowEnabled(ok(dialog)));
        ::SetWindowTextW(entry(dialog), L"x");
        EXPECT_TRUE(::IsWindowEnabled(ok(dialog)));
        ::SetWindowTextW(entry(dialog), L"");
        EXPECT_FALSE(::IsWindowEnabled(ok(dialog)));
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);  // as Enter does
        EXPECT_TRUE(::IsWindowVisible(dialog));
        cancel(dialog);
    });
}

TEST_F(PasswordDialogTest, GivesTheTextTheFocusOnEachActivation) {
    const HostWindow other;
    ask([&](HWND dialog) {
        EXPECT_EQ(::GetFocus(), entry(dialog));
        ::SetFocus(item(dialog, IDC_CHK_SHOW));
        ::SetActiveWindow(other.window());
        EXPECT_NE(::GetFocus(), entry(dialog));
        ::SetActiveWindow(dialog);
        EXPECT_EQ(::GetFocus(), entry(dialog));
        cancel(dialog);
    });
}

TEST_F(PasswordDialogTest, HidesTheCharactersUnlessTheUserWantsToSeeThem) {
    ask([](HWND dialog) {
        const LRESULT hiding = ::SendMessageW(entry(dialog), EM_GETPASSWORDCHAR, 0, 0);
        EXPECT_NE(hiding, 0);
        EXPECT_EQ(textOf(item(dialog, IDC_CHK_SHOW)), L"&Show the password");
        ::SendMessageW(item(dialog, IDC_CHK_SHOW), BM_CLICK, 0, 0);
        EXPECT_EQ(::SendMessageW(entry(dialog), EM_GETPASSWORDCHAR, 0, 0), 0);
        ::SendMessageW(item(dialog, IDC_CHK_SHOW), BM_CLICK, 0, 0);
        EXPECT_EQ(::SendMessageW(entry(dialog), EM_GETPASSWORDCHAR, 0, 0), hiding);
        cancel(dialog);
    });
}

TEST_F(PasswordDialogTest, TakesTheLongestPassword) {
    const Answer answer = ask([](HWND dialog) {
        EXPECT_EQ(::SendMessageW(entry(dialog), EM_GETLIMITTEXT, 0, 0), 255);
        ::SetWindowTextW(entry(dialog), std::wstring(255, L'\x30C6').c_str());
        ::SendMessageW(entry(dialog), WM_CHAR, L'x', 1);  // one more is not taken
        click(dialog, IDOK);
    });
    EXPECT_EQ(answer.password, std::wstring(255, L'\x30C6'));
}

TEST_F(PasswordDialogTest, NamesTheArchive) {
    ask([](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Password");
        EXPECT_EQ(itemText(dialog, IDC_LBL_ARCHIVE), L"C:\\Docs & More\\secret.ace");
        const LONG_PTR style = ::GetWindowLongPtrW(item(dialog, IDC_LBL_ARCHIVE), GWL_STYLE);
        EXPECT_EQ(style & SS_ELLIPSISMASK, SS_PATHELLIPSIS);
        EXPECT_NE(style & SS_NOPREFIX, 0);
        cancel(dialog);
    });
}

TEST_F(PasswordDialogTest, TakesTheHostsFont) {
    ask(
        [](HWND dialog) {
            for (const int id : {IDC_LBL_ARCHIVE, IDC_TXT_PASSWORD, IDC_CHK_SHOW, IDOK, IDCANCEL}) {
                EXPECT_EQ(faceOf(item(dialog, id)), L"Courier New") << id;
            }
            cancel(dialog);
        },
        L"Courier New");
}

TEST_F(PasswordDialogTest, StandsInTheMiddleOfItsOwnerAndKeepsItFromInput) {
    ask([this](HWND dialog) {
        const RECT own = placeOf(dialog), around = placeOf(host->child());
        EXPECT_NEAR(own.left + own.right, around.left + around.right, 2);
        EXPECT_NEAR(own.top + own.bottom, around.top + around.bottom, 2);
        EXPECT_FALSE(::IsWindowEnabled(host->window()));
        cancel(dialog);
    });
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
}

// As a source of passwords

TEST_F(PasswordDialogTest, IsASourceOfPasswords) {
    DialogPasswords passwords([] { return std::wstring(L"Courier New"); });
    {
        const OnDialog user([](HWND dialog) {
            EXPECT_EQ(itemText(dialog, IDC_LBL_ARCHIVE), L"C:\\a.ace");
            EXPECT_EQ(faceOf(entry(dialog)), L"Courier New");
            ::SetWindowTextW(entry(dialog), L"secret");
            click(dialog, IDOK);
        });
        EXPECT_EQ(passwords.ask(host->child(), L"C:\\a.ace"), L"secret");
    }
    const OnDialog user([](HWND dialog) {
        ::SetWindowTextW(entry(dialog), L"secret");
        cancel(dialog);
    });
    EXPECT_EQ(passwords.ask(host->child(), L"C:\\a.ace"), std::nullopt);
}

// What stays in memory

// "Xq7!vR#2mZ" as the text box holds it, each unit with all bits turned: this program's memory must not hold it itself.
constexpr wchar_t kTurned[] = {0xFFA7, 0xFF8E, 0xFFC8, 0xFFDE, 0xFF89, 0xFFAD, 0xFFDC, 0xFFCD, 0xFF92, 0xFFA5};

bool isPassword(const wchar_t* place) {
    for (std::size_t index = 0; index < std::size(kTurned); ++index) {
        if (static_cast<wchar_t>(~place[index]) != kTurned[index]) return false;
    }
    return true;
}

/// How often the password stands in the memory that this process can write.
int copiesInMemory() {
    int copies = 0;
    MEMORY_BASIC_INFORMATION region;
    for (const char* place = nullptr; ::VirtualQuery(place, &region, sizeof region) == sizeof region;
         place = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State != MEM_COMMIT || region.Protect != PAGE_READWRITE) continue;
        const auto* const begin = static_cast<const wchar_t*>(region.BaseAddress);
        const auto* const end = begin + region.RegionSize / sizeof(wchar_t) - std::size(kTurned);
        for (const wchar_t* each = begin; each <= end; ++each) copies += isPassword(each) ? 1 : 0;
    }
    return copies;
}

void typePassword(HWND dialog) {
    for (const wchar_t turned : kTurned) ::SendMessageW(entry(dialog), WM_CHAR, static_cast<wchar_t>(~turned), 1);
}

TEST_F(PasswordDialogTest, LeavesNoCopyOfThePasswordBehind) {
    int typed = 0, confirmed = 0;
    {
        fArcPassword dialog(archive);
        const OnDialog user([&](HWND window) {
            typePassword(window);
            typed = copiesInMemory();
            click(window, IDOK);
        });
        dialog.ask(host->child(), L"");
        confirmed = copiesInMemory();
        EXPECT_TRUE(isPassword(dialog.Password().c_str()));
    }
    EXPECT_GE(typed, 1) << "the search finds what is there";
    EXPECT_EQ(confirmed, 1) << "in the dialog's object and nowhere else";
    EXPECT_EQ(copiesInMemory(), 0);
}

TEST_F(PasswordDialogTest, LeavesNoCopyBehindWhenCancelled) {
    fArcPassword dialog(archive);
    const OnDialog user([&](HWND window) {
        typePassword(window);
        ::PostMessageW(window, WM_CLOSE, 0, 0);
    });
    dialog.ask(host->child(), L"");
    EXPECT_EQ(copiesInMemory(), 0);
}

TEST_F(PasswordDialogTest, LeavesNoCopyBehindWhenItWasShown) {
    fArcPassword dialog(archive);
    const OnDialog user([&](HWND window) {
        typePassword(window);
        ::SendMessageW(item(window, IDC_CHK_SHOW), BM_CLICK, 0, 0);
        ::UpdateWindow(window);
        cancel(window);
    });
    dialog.ask(host->child(), L"");
    EXPECT_EQ(copiesInMemory(), 0);
}

}  // namespace
}  // namespace tovar::test
