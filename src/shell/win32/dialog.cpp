#include "shell/win32/dialog.h"

#include "shell/win32/module_instance.h"
#include "shell/win32/visual_styles.h"

namespace tovar {

std::intptr_t Dialog::showModal(HWND owner, WORD templateId, std::wstring_view fontName) {
    fontName_ = fontName;
    takesFocus_ = true;
    const VisualStyles styles;
    return ::DialogBoxParamW(moduleInstance(), MAKEINTRESOURCEW(templateId), owner, &Dialog::procedure,
                             reinterpret_cast<LPARAM>(this));
}

Dialog::~Dialog() { destroy(); }

bool Dialog::create(HWND owner, WORD templateId, std::wstring_view fontName) {
    if (hwnd_ != nullptr) return false;
    fontName_ = fontName;
    takesFocus_ = false;
    const VisualStyles styles;
    ::CreateDialogParamW(moduleInstance(), MAKEINTRESOURCEW(templateId), owner, &Dialog::procedure,
                         reinterpret_cast<LPARAM>(this));
    return hwnd_ != nullptr;
}

void Dialog::destroy() noexcept {
    if (hwnd_ != nullptr) ::DestroyWindow(hwnd_);
}

INT_PTR CALLBACK Dialog::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<Dialog*>(lParam)->hwnd_ = window;
        ::SetWindowLongPtrW(window, DWLP_USER, lParam);
    }
    auto* const self = reinterpret_cast<Dialog*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) return FALSE;
    INT_PTR answer = FALSE;
    try {
        answer = self->answer(message, wParam, lParam);
    } catch (...) {
        // The dialog goes on as if the message had not been its own.
    }
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, DWLP_USER, 0);
        self->hwnd_ = nullptr;
    }
    return answer;
}

INT_PTR Dialog::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            ApplyFont(hwnd_, fontName_, fonts_);
            onLoad();
            return takesFocus_ ? TRUE : FALSE;
        case WM_COMMAND:
            return onCommand(wParam) ? TRUE : FALSE;
        default:
            return onMessage(message, wParam, lParam).value_or(FALSE);
    }
}

}  // namespace tovar
