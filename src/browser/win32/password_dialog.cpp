#include "browser/win32/password_dialog.h"

#include <algorithm>

#include "browser/win32/work_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"

namespace tovar {
namespace {

constexpr std::size_t kLongest = PasswordPresenter::kLongestPassword;

}  // namespace

void fArcPassword::ask(HWND owner, std::wstring_view fontName) {
    owner_ = owner;
    if (showModal(owner, IDD_ARC_PASSWORD, fontName) != IDOK) presenter_.onGone();
}

void fArcPassword::onLoad() {
    const HWND text = control(IDC_TXT_PASSWORD);
    hidingCharacter_ = static_cast<WPARAM>(::SendMessageW(text, EM_GETPASSWORDCHAR, 0, 0));
    ::SendMessageW(text, EM_SETLIMITTEXT, kLongest, 0);
    // Room for the longest text from the start: a control that grows leaves copies of the text where it was.
    wipeText();
    ::SetWindowTextW(control(IDC_LBL_ARCHIVE), archive_.c_str());
    CenterDialog(hwnd(), owner_);
    presenter_.onLoad();
}

bool fArcPassword::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fArcPassword> routes[] = {
        {IDOK, BN_CLICKED, &fArcPassword::onOk},
        {IDCANCEL, BN_CLICKED, &fArcPassword::onCancel},
        {IDC_TXT_PASSWORD, EN_CHANGE, &fArcPassword::onTextChanged},
        {IDC_CHK_SHOW, BN_CLICKED, &fArcPassword::onShowToggled},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fArcPassword::onMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_ACTIVATE:
            // The default handling would give the focus back to the control that had it last.
            if (LOWORD(wParam) == WA_INACTIVE) return std::nullopt;
            presenter_.onActivate();
            return TRUE;
        case WM_DESTROY:
            wipeText();
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

void fArcPassword::onTextChanged() {
    presenter_.onTextChanged(static_cast<std::size_t>(std::max(::GetWindowTextLengthW(control(IDC_TXT_PASSWORD)), 0)));
}

void fArcPassword::onShowToggled() {
    presenter_.onShowCharacters(::IsDlgButtonChecked(hwnd(), IDC_CHK_SHOW) == BST_CHECKED);
}

void fArcPassword::enableOk(bool enabled) { ::EnableWindow(control(IDOK), enabled ? TRUE : FALSE); }

void fArcPassword::showCharacters(bool shown) {
    ::SendMessageW(control(IDC_TXT_PASSWORD), EM_SETPASSWORDCHAR, shown ? 0 : hidingCharacter_, 0);
    ::InvalidateRect(control(IDC_TXT_PASSWORD), nullptr, TRUE);
}

void fArcPassword::focusText() { ::SetFocus(control(IDC_TXT_PASSWORD)); }

void fArcPassword::readText(std::wstring& text) {
    text.resize(kLongest + 1);
    const int length = ::GetWindowTextW(control(IDC_TXT_PASSWORD), text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
}

void fArcPassword::close() { ::EndDialog(hwnd(), presenter_.Cancelled() ? IDCANCEL : IDOK); }

/// Overwrites what the control holds, and what it would bring back on "undo".
void fArcPassword::wipeText() noexcept {
    wchar_t blanks[kLongest + 1];
    std::fill_n(blanks, kLongest, L' ');
    blanks[kLongest] = 0;
    const HWND text = control(IDC_TXT_PASSWORD);
    ::SetWindowTextW(text, blanks);
    ::SetWindowTextW(text, L"");
    ::SendMessageW(text, EM_EMPTYUNDOBUFFER, 0, 0);
}

}  // namespace tovar
