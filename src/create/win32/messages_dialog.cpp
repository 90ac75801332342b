#include "create/win32/messages_dialog.h"

#include "create/win32/pack_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"

namespace tovar {

void MessagesDialog::show(HWND owner, std::wstring_view fontName) {
    owner_ = owner;
    showModal(owner, IDD_ARC_MESSAGES, fontName);
}

void MessagesDialog::onLoad() {
    const HWND text = control(IDC_TXT_MESSAGES);
    ::SendMessageW(text, EM_SETLIMITTEXT, 0, 0);  // as much as there is
    ::SetWindowTextW(text, text_.c_str());
    anchors_.begin(hwnd(), {{IDC_TXT_MESSAGES, kLeft | kTop | kRight | kBottom},
                            {IDC_CMD_COPY, kRight | kBottom},
                            {IDOK, kRight | kBottom}});
    CenterDialog(hwnd(), ::GetAncestor(owner_, GA_ROOT));
    keepOnScreen(hwnd());
}

bool MessagesDialog::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<MessagesDialog> routes[] = {
        {IDOK, BN_CLICKED, &MessagesDialog::onClose},
        {IDCANCEL, BN_CLICKED, &MessagesDialog::onClose},
        {IDC_CMD_COPY, BN_CLICKED, &MessagesDialog::onCopy},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> MessagesDialog::onMessage(UINT message, WPARAM, LPARAM lParam) {
    return anchors_.onMessage(message, lParam);
}

/// What is selected, or all of it.
void MessagesDialog::onCopy() {
    const HWND text = control(IDC_TXT_MESSAGES);
    DWORD from = 0, to = 0;
    ::SendMessageW(text, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    if (from == to) ::SendMessageW(text, EM_SETSEL, 0, -1);
    ::SendMessageW(text, WM_COPY, 0, 0);
}

}  // namespace tovar
