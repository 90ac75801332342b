#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <string>
#include <vector>

#include "settings/win32/config_dialog_controls.h"
#include "shell/win32/window.h"
#include "win32/extraction/support/dialog_user.h"

namespace tovar::test {

using ConfigDialogUser = DialogUser<IDC_CMD_DETAILS>;

/// What a user does in the configuration dialog.
struct ConfigControls {
    HWND dialog;

    [[nodiscard]] HWND item(int id) const { return ::GetDlgItem(dialog, id); }
    [[nodiscard]] std::wstring text(int id) const { return textOf(item(id)); }

    /// The boxes in their order: creating ZIP, LHA, CAB, opening ZIP, RAR, ARJ, LHA, CAB, TAR, ACE.
    static std::vector<int> boxes() {
        return {IDC_CHK_PACKER,       IDC_CHK_PACKER_LHA,   IDC_CHK_PACKER_CAB,   IDC_CHK_UNPACKER,
                IDC_CHK_UNPACKER_RAR, IDC_CHK_UNPACKER_ARJ, IDC_CHK_UNPACKER_LHA, IDC_CHK_UNPACKER_CAB,
                IDC_CHK_UNPACKER_TAR, IDC_CHK_UNPACKER_ACE};
    }
    /// One digit a box.
    [[nodiscard]] std::string checked() const {
        std::string digits;
        for (const int id : boxes()) digits += static_cast<char>('0' + ::IsDlgButtonChecked(dialog, id));
        return digits;
    }
    [[nodiscard]] std::string enabled() const {
        std::string digits;
        for (const int id : boxes()) digits += ::IsWindowEnabled(item(id)) ? '1' : '0';
        return digits;
    }
    void click(int id) const { ::SendMessageW(item(id), BM_CLICK, 0, 0); }
    /// Presses a button once the caller has returned.
    void press(int id) const {
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(item(id)));
    }
    /// Presses a key in the control that has the keyboard.
    void key(WPARAM code) const { ::PostMessageW(::GetFocus(), WM_KEYDOWN, code, 1); }
    /// Presses a letter with Alt.
    void mnemonic(wchar_t letter) const {
        MSG message{::GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29, 0, {}};
        ::IsDialogMessageW(dialog, &message);
    }

    /// What the tool tip of a box says.
    [[nodiscard]] std::wstring hint(int index) const {
        std::pair<HWND, HWND> search{dialog, nullptr};
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM given) WINAPI -> BOOL {
                auto& [owner, found] = *reinterpret_cast<std::pair<HWND, HWND>*>(given);
                wchar_t name[32] = L"";
                ::GetClassNameW(window, name, 32);
                if (std::wstring(name) != TOOLTIPS_CLASSW || ::GetWindow(window, GW_OWNER) != owner) return TRUE;
                found = window;
                return FALSE;
            },
            reinterpret_cast<LPARAM>(&search));
        const HWND box = item(boxes().at(static_cast<std::size_t>(index)));
        std::wstring text(1024, L'\0');
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = dialog;
        tool.uId = ::IsWindowEnabled(box) ? reinterpret_cast<UINT_PTR>(box) : static_cast<UINT_PTR>(index);
        tool.lpszText = text.data();
        ::SendMessageW(search.second, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        return text.c_str();
    }
};

}  // namespace tovar::test
