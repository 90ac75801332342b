#include "browser/win32/progress_dialog.h"

#include <commctrl.h>

#include "browser/win32/work_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"
#include "shell/win32/pending_messages.h"

namespace tovar {
namespace {

constexpr UINT_PTR kCancelKeys = 1;
constexpr UINT kLabelRest = 50;  ///< milliseconds between two texts of a label

/// Escape is Cancel also in message loops that know nothing of the dialog, such as those of archiver libraries. Enter
/// is not: it is the key that has just started the work, and may be held a moment too long.
LRESULT CALLBACK cancelButton(HWND button, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
        ::SendMessageW(::GetParent(button), WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                       reinterpret_cast<LPARAM>(button));
        return 0;
    }
    if (message == WM_GETDLGCODE) return DLGC_BUTTON;  // never the default button
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(button, &cancelButton, id);
    return ::DefSubclassProc(button, message, wParam, lParam);
}

}  // namespace

fArcProgress::fArcProgress(RegionalSettings regional)
    : folder_{.id = IDC_LBL_DIR, .text = {}},
      file_{.id = IDC_LBL_FILE, .text = {}},
      presenter_(*this, *this, std::move(regional)) {}

fArcProgress::~fArcProgress() { unload(); }

bool fArcProgress::load(HWND owner, std::wstring_view fontName) {
    if (hwnd() != nullptr) return false;
    owner_ = owner;
    return create(owner, IDD_ARC_PROGRESS, fontName);
}

void fArcProgress::show() {
    if (hwnd() == nullptr || pause_) return;
    standAlone();
    pause_ = std::make_unique<OwnerPause>(owner_);
    ::ShowWindow(hwnd(), SW_SHOW);
    ::SetFocus(control(IDCANCEL));
    // The work that follows leaves no time for it.
    ::UpdateWindow(hwnd());
}

void fArcProgress::onLoad() {
    ::SendMessageW(control(IDC_PBAR1), PBM_SETRANGE32, 0, 100);
    folder_.waiting = file_.waiting = false;
    ::SetWindowSubclass(control(IDCANCEL), &cancelButton, kCancelKeys, 0);
    CenterDialog(hwnd(), owner_);
    presenter_.onLoad();
    onTimer(folder_);  // the first name is shown at once
    onTimer(file_);
}

bool fArcProgress::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fArcProgress> routes[] = {
        {IDCANCEL, BN_CLICKED, &fArcProgress::onCancel},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fArcProgress::onMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_TIMER:
            if (wParam == IDC_LBL_DIR) onTimer(folder_);
            if (wParam == IDC_LBL_FILE) onTimer(file_);
            return TRUE;
        case WM_CLOSE:
            onCancel();
            return TRUE;
        case WM_DESTROY:
            presenter_.onGone();
            if (pause_) pause_->resume();
            return std::nullopt;
        case WM_NCDESTROY:
            if (pause_) pause_->returnFocus();
            pause_.reset();
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

void fArcProgress::processPending() {
    runPendingMessages(hwnd());
    // A part of a host's window can go while the window that the dialog stands over stays.
    if (owner_ != nullptr && !::IsWindow(owner_)) presenter_.onCancel();
}

void fArcProgress::setCaption(std::wstring_view text) { ::SetWindowTextW(hwnd(), std::wstring(text).c_str()); }

void fArcProgress::setSummary(std::wstring_view text) { setLabel(IDC_LBL_SUMMARY, text); }

void fArcProgress::setFolder(std::wstring_view text) { setLabel(folder_, text); }

void fArcProgress::setFile(std::wstring_view text) { setLabel(file_, text); }

void fArcProgress::setSize(std::wstring_view text) { setLabel(IDC_LBL_SIZE, text); }

void fArcProgress::setBar(int percentage) {
    ::SendMessageW(control(IDC_PBAR1), PBM_SETPOS, static_cast<WPARAM>(percentage), 0);
}

void fArcProgress::close() {
    const bool wasActive = ::GetActiveWindow() == hwnd();
    const std::unique_ptr<OwnerPause> pause = std::move(pause_);
    if (pause) pause->resume();
    destroy();
    if (pause && wasActive) pause->returnFocus();
}

void fArcProgress::setLabel(int id, std::wstring_view text) {
    ::SetWindowTextW(control(id), std::wstring(text).c_str());
}

void fArcProgress::setLabel(HurriedLabel& label, std::wstring_view text) {
    if (label.waiting) {
        label.text = text;
        label.stale = true;
        return;
    }
    setLabel(label.id, text);
    label.stale = false;
    label.waiting = ::SetTimer(hwnd(), static_cast<UINT_PTR>(label.id), kLabelRest, nullptr) != 0;
}

void fArcProgress::onTimer(HurriedLabel& label) {
    ::KillTimer(hwnd(), static_cast<UINT_PTR>(label.id));
    label.waiting = false;
    if (label.stale) setLabel(label, label.text);
}

void fArcProgress::standAlone() {
    const LONG_PTR style = ::GetWindowLongPtrW(hwnd(), GWL_STYLE);
    const HWND parent = ::GetAncestor(hwnd(), GA_PARENT);
    if ((style & WS_CHILD) == 0 && parent == ::GetDesktopWindow()) return;
    RECT place{};
    ::GetWindowRect(hwnd(), &place);
    owner_ = parent;
    ::SetParent(hwnd(), nullptr);
    ::SetWindowLongPtrW(hwnd(), GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_CHILD)) | WS_POPUP);
    ::SetWindowLongPtrW(hwnd(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(::GetAncestor(parent, GA_ROOT)));
    ::SetWindowPos(hwnd(), nullptr, place.left, place.top, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace tovar
