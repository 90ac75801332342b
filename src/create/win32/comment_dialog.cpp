#include "create/win32/comment_dialog.h"

#include "archivers/convention/zip_abi.h"
#include "create/win32/pack_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"
#include "shell/win32/window.h"

namespace tovar {

std::optional<std::wstring> CommentDialog::ask(HWND owner, std::wstring_view fontName) {
    owner_ = owner;
    if (showModal(owner, IDD_ARC_COMMENT, fontName) != IDOK) return std::nullopt;
    return text_;
}

void CommentDialog::onLoad() {
    ::SetWindowTextW(control(IDC_LBL_COMMENT), kCommentQuestion);
    ::SendMessageW(control(IDC_TXT_COMMENT), EM_SETLIMITTEXT, archiver::zip_abi::kCommentSize - 1, 0);
    CenterDialog(hwnd(), ::GetAncestor(owner_, GA_ROOT));
    keepOnScreen(hwnd());
}

bool CommentDialog::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<CommentDialog> routes[] = {
        {IDOK, BN_CLICKED, &CommentDialog::onOk},
        {IDCANCEL, BN_CLICKED, &CommentDialog::onCancel},
    };
    return dispatchCommand(*this, routes, wParam);
}

void CommentDialog::onOk() {
    text_ = textOf(control(IDC_TXT_COMMENT));
    ::EndDialog(hwnd(), IDOK);
}

}  // namespace tovar
