#include "shell/win32/new_folder_dialog.h"

#include "shell/component_name.h"
#include "shell/win32/folder_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"
#include "shell/win32/visual_styles.h"

namespace tovar {

std::wstring fNewFolder::ask() {
    // A dialog that could not be shown is one that was cancelled.
    if (showModal(owner_, IDD_NEW_FOLDER, fontName_) < 0) return {};
    return presenter_.NewFolder();
}

void fNewFolder::onLoad() {
    presenter_.onLoad();
    CenterDialog(hwnd(), owner_);
}

bool fNewFolder::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fNewFolder> routes[] = {
        {IDOK, BN_CLICKED, &fNewFolder::onOk},
        {IDCANCEL, BN_CLICKED, &fNewFolder::onCancel},
        {IDC_TXT_NAME, EN_CHANGE, &fNewFolder::onNameChanged},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fNewFolder::onMessage(UINT message, WPARAM wParam, LPARAM) {
    // The default handling would give the focus back to the control that had it last.
    if (message != WM_ACTIVATE || LOWORD(wParam) == WA_INACTIVE) return std::nullopt;
    presenter_.onActivated();
    return TRUE;
}

void fNewFolder::onNameChanged() { presenter_.onNameChanged(textOf(control(IDC_TXT_NAME))); }

// The dialog takes Enter for its default button, also while that is disabled.
void fNewFolder::onOk() { presenter_.onEnter(); }

void fNewFolder::setName(std::wstring_view name) {
    ::SetWindowTextW(control(IDC_TXT_NAME), std::wstring(name).c_str());
}

void fNewFolder::enableOk(bool enabled) { ::EnableWindow(control(IDOK), enabled ? TRUE : FALSE); }

void fNewFolder::focusName() { ::SetFocus(control(IDC_TXT_NAME)); }

void fNewFolder::warn(std::wstring_view text) {
    const VisualStyles styles;
    ::MessageBoxW(hwnd(), std::wstring(text).c_str(), std::wstring(kComponentName).c_str(),
                  MB_ICONEXCLAMATION | MB_OKCANCEL);
}

}  // namespace tovar
