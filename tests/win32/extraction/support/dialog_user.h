#pragma once
#include <windows.h>

#include <functional>
#include <set>
#include <string>

#include "browser/win32/unpack_dialog_controls.h"
#include "shell/win32/window.h"

namespace tovar::test {

/// Uses the dialogs of this thread as they come up, each once. One object of a class at a time.
template <int KnownBy>
class DialogUser {
public:
    /// @param use  is called with each dialog that has the control `KnownBy`
    explicit DialogUser(std::function<void(HWND dialog)> use) : use_(std::move(use)) {
        current() = this;
        timer_ = ::SetTimer(nullptr, 0, 10, &onTimer);
    }
    ~DialogUser() {
        ::KillTimer(nullptr, timer_);
        current() = nullptr;
    }
    DialogUser(const DialogUser&) = delete;
    DialogUser& operator=(const DialogUser&) = delete;

    /// How many dialogs came up.
    [[nodiscard]] int times() const { return times_; }
    /// Whether some came up and all are gone.
    [[nodiscard]] bool done() const { return times_ > 0 && ::IsWindow(last_) == FALSE; }

private:
    static DialogUser*& current() {
        static DialogUser* user = nullptr;
        return user;
    }

    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &onWindow, 0);
    }

    static BOOL CALLBACK onWindow(HWND window, LPARAM) {
        DialogUser* const self = current();
        if (self == nullptr || window == self->last_ || !::IsWindowVisible(window) ||
            ::GetDlgItem(window, KnownBy) == nullptr) {
            return TRUE;
        }
        self->last_ = window;
        ++self->times_;
        self->use_(window);
        return FALSE;
    }

    std::function<void(HWND)> use_;
    UINT_PTR timer_ = 0;
    HWND last_ = nullptr;
    int times_ = 0;
};

using UnpackDialogUser = DialogUser<IDC_WEN_FOLDER_TREE_VIEW1>;

/// What a user does in the extraction dialog.
struct UnpackControls {
    HWND dialog;

    [[nodiscard]] HWND item(int id) const { return ::GetDlgItem(dialog, id); }
    [[nodiscard]] bool isEnabled(int id) const { return ::IsWindowEnabled(item(id)) != FALSE; }
    [[nodiscard]] bool isChecked(int id) const { return ::IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
    [[nodiscard]] std::wstring text(int id) const { return textOf(item(id)); }

    void click(int id) const { ::SendMessageW(item(id), BM_CLICK, 0, 0); }
    void setCheck(int id, bool checked) const {
        if (isChecked(id) != checked) click(id);
    }
    /// @param scope  0: selected files, 1: all files, 2: those that match
    void choose(int scope) const { click(IDC_OPT_EXTRACT + scope); }
    void type(const std::wstring& pattern) const { ::SetWindowTextW(item(IDC_TXT_EXTENSION), pattern.c_str()); }
    /// Presses a button once the caller has returned.
    void press(int id) const {
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(item(id)));
    }
};

}  // namespace tovar::test
