#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "create/win32/pack_dialog_controls.h"
#include "shell/win32/window.h"
#include "win32/extraction/support/dialog_user.h"

namespace tovar::test {

using PackDialogUser = DialogUser<IDC_CMB_PACKER>;
using MessagesDialogUser = DialogUser<IDC_TXT_MESSAGES>;
using CommentDialogUser = DialogUser<IDC_TXT_COMMENT>;

/// What a user does in the pack dialog.
struct PackControls {
    HWND dialog;

    [[nodiscard]] HWND item(int id) const { return ::GetDlgItem(dialog, id); }
    [[nodiscard]] bool isEnabled(int id) const { return ::IsWindowEnabled(item(id)) != FALSE; }
    [[nodiscard]] bool isChecked(int id) const { return ::IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
    [[nodiscard]] std::wstring text(int id) const { return textOf(item(id)); }
    [[nodiscard]] int selected(int id) const { return static_cast<int>(::SendMessageW(item(id), CB_GETCURSEL, 0, 0)); }
    [[nodiscard]] std::vector<std::wstring> items(int id) const {
        std::vector<std::wstring> texts;
        const LRESULT count = ::SendMessageW(item(id), CB_GETCOUNT, 0, 0);
        for (LRESULT each = 0; each < count; ++each) {
            std::wstring text(static_cast<std::size_t>(::SendMessageW(item(id), CB_GETLBTEXTLEN, each, 0)), L'\0');
            ::SendMessageW(item(id), CB_GETLBTEXT, each, reinterpret_cast<LPARAM>(text.data()));
            texts.push_back(text);
        }
        return texts;
    }
    [[nodiscard]] std::vector<std::wstring> names() const {
        std::vector<std::wstring> texts;
        const LRESULT count = ::SendMessageW(item(IDC_LST_ARC_LIST), LB_GETCOUNT, 0, 0);
        for (LRESULT each = 0; each < count; ++each) {
            std::wstring text(static_cast<std::size_t>(::SendMessageW(item(IDC_LST_ARC_LIST), LB_GETTEXTLEN, each, 0)),
                              L'\0');
            ::SendMessageW(item(IDC_LST_ARC_LIST), LB_GETTEXT, each, reinterpret_cast<LPARAM>(text.data()));
            texts.push_back(text);
        }
        return texts;
    }

    void click(int id) const { ::SendMessageW(item(id), BM_CLICK, 0, 0); }
    void setCheck(int id, bool checked) const {
        if (isChecked(id) != checked) click(id);
    }
    /// Selects an item of a list as a user does.
    void choose(int id, int index) const {
        ::SendMessageW(item(id), CB_SETCURSEL, index, 0);
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(item(id)));
    }
    void type(int id, const std::wstring& text) const { ::SetWindowTextW(item(id), text.c_str()); }
    /// Presses a button once the caller has returned.
    void press(int id) const {
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(item(id)));
    }
};

}  // namespace tovar::test
