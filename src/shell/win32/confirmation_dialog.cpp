#include "shell/win32/confirmation_dialog.h"

// windows.h first
#include <commctrl.h>

#include "shell/win32/confirmation_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"

namespace tovar {
namespace {

constexpr UINT kMarqueeStep = 40;  // milliseconds

RECT placeIn(HWND dialog, HWND control) {
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(HWND_DESKTOP, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

}  // namespace

bool ConfirmationDialog::ask(HWND owner, std::wstring_view fontName) {
    owner_ = owner;
    showModal(owner, IDD_CONFIRMATION, fontName);
    presenter_.rethrow();
    return presenter_.agreed();
}

void ConfirmationDialog::onLoad() {
    ::SendMessageW(control(IDC_IMG_QUESTION), STM_SETICON, reinterpret_cast<WPARAM>(::LoadIconW(nullptr, IDI_QUESTION)),
                   0);
    presenter_.onLoad();
    CenterDialog(hwnd(), owner_);
    keepOnScreen(hwnd());
}

bool ConfirmationDialog::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<ConfirmationDialog> routes[] = {
        {IDYES, BN_CLICKED, &ConfirmationDialog::onYes},
        {IDCANCEL, BN_CLICKED, &ConfirmationDialog::onNo},
    };
    return dispatchCommand(*this, routes, wParam);
}

void ConfirmationDialog::setCaption(std::wstring_view text) { ::SetWindowTextW(hwnd(), std::wstring(text).c_str()); }

void ConfirmationDialog::show(const Confirmation& confirmation) {
    ::SetWindowTextW(control(IDC_LBL_QUESTION), confirmation.question.c_str());
    ::SetWindowTextW(control(IDC_LBL_NOTE), confirmation.note.c_str());
    ::SetWindowTextW(control(IDYES), confirmation.yes.c_str());
    ::SetWindowTextW(control(IDCANCEL), confirmation.no.c_str());
    const HWND list = control(IDC_TXT_LIST);
    ::SendMessageW(list, EM_SETLIMITTEXT, 0, 0);  // as much as the system has room for
    ::SetWindowTextW(list, confirmation.list.c_str());
    if (confirmation.list.empty()) leaveOut(IDC_TXT_LIST);
    if (confirmation.note.empty()) leaveOut(IDC_LBL_NOTE);
}

/// Hides a control without a text; what is below moves up.
void ConfirmationDialog::leaveOut(int id) {
    const RECT gone = placeIn(hwnd(), control(id));
    const int height = gone.bottom - gone.top;
    ::ShowWindow(control(id), SW_HIDE);
    for (const int below : {IDC_LBL_NOTE, IDC_PRG_WORK, IDYES, IDCANCEL}) {
        const RECT place = placeIn(hwnd(), control(below));
        if (place.top < gone.bottom) continue;
        ::SetWindowPos(control(below), nullptr, place.left, place.top - height, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    RECT own{};
    ::GetWindowRect(hwnd(), &own);
    ::SetWindowPos(hwnd(), nullptr, 0, 0, own.right - own.left, own.bottom - own.top - height,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ConfirmationDialog::showWorking() {
    for (const int button : {IDYES, IDCANCEL}) ::EnableWindow(control(button), FALSE);
    ::EnableMenuItem(::GetSystemMenu(hwnd(), FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    ::SendMessageW(control(IDC_PRG_WORK), PBM_SETMARQUEE, TRUE, kMarqueeStep);
    ::ShowWindow(control(IDC_PRG_WORK), SW_SHOW);
    // The work may let no message run for a while.
    ::UpdateWindow(hwnd());
    ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void ConfirmationDialog::close() {
    if (hwnd() != nullptr) ::EndDialog(hwnd(), presenter_.agreed() ? IDYES : IDCANCEL);
}

/// A dialog that is known as long as it is shown.
class WindowsConfirmations::Shown {
public:
    Shown(std::vector<ConfirmationDialog*>& all, ConfirmationDialog& dialog) : all_(all), dialog_(dialog) {
        all_.push_back(&dialog_);
    }
    ~Shown() { std::erase(all_, &dialog_); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

private:
    std::vector<ConfirmationDialog*>& all_;
    ConfirmationDialog& dialog_;
};

bool WindowsConfirmations::ask(WindowHandle owner, const Confirmation& confirmation, const Work& work) {
    ConfirmationDialog dialog(confirmation, work);
    const Shown shown(shown_, dialog);
    return dialog.ask(static_cast<HWND>(owner), fontName_);
}

void WindowsConfirmations::decline(WindowHandle owner) noexcept {
    for (ConfirmationDialog* const each : shown_) {
        if (each->owner() == owner) each->decline();
    }
}

}  // namespace tovar
