#include "shell/win32/select_dialog.h"

#include "shell/win32/folder_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"

namespace tovar {
namespace {

// In the units of the template, so that they grow with the font.
constexpr int kMargin = 7, kGap = 4, kLeastWidth = 180, kLeastHeight = 120;

void move(HWND control, const SelectBox& box) {
    ::SetWindowPos(control, nullptr, box.left, box.top, box.width, box.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void fSelect::show() { showModal(owner_, IDD_SELECT, fontName_); }

void fSelect::onLoad() {
    WenFolderBrowser::Events events;
    events.folderChanged = [this](const std::optional<std::wstring>& folder, FolderState state) {
        presenter_.onFolderChanged(folder, state);
    };
    events.namesSelected = [this](const std::wstring& names) { presenter_.onNamesSelected(names); };
    browser_.createInstead(hwnd(), IDC_WEN_FOLDER_BROWSER, std::move(events));
    RECT least{0, 0, kLeastWidth, kLeastHeight};
    ::MapDialogRect(hwnd(), &least);
    least_ = {least.right, least.bottom};
    RECT inside{};
    ::GetClientRect(hwnd(), &inside);
    onSize(SIZE_RESTORED, MAKELPARAM(inside.right, inside.bottom));
    CenterDialog(hwnd(), owner_);
    presenter_.onLoad();
}

bool fSelect::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fSelect> routes[] = {
        {IDOK, BN_CLICKED, &fSelect::onOk},
        {IDCANCEL, BN_CLICKED, &fSelect::onCancel},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fSelect::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<fSelect> routes[] = {
        {WM_SIZE, &fSelect::onSize},
        {WM_GETMINMAXINFO, &fSelect::onLimits},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

std::optional<LRESULT> fSelect::onSize(WPARAM wParam, LPARAM lParam) {
    if (wParam == SIZE_MINIMIZED) return std::nullopt;
    RECT margins{kMargin, kMargin, kGap, kGap}, button{};
    ::MapDialogRect(hwnd(), &margins);
    ::GetClientRect(control(IDOK), &button);
    const SelectLayout layout = SelectPresenter::layOut(
        LOWORD(lParam), HIWORD(lParam), {0, 0, button.right, button.bottom}, margins.left, margins.right);
    move(control(IDC_WEN_FOLDER_BROWSER), layout.browser);
    move(control(IDOK), layout.ok);
    move(control(IDCANCEL), layout.cancel);
    // The buttons were painted at their places before.
    ::InvalidateRect(hwnd(), nullptr, TRUE);
    return TRUE;
}

std::optional<LRESULT> fSelect::onLimits(WPARAM, LPARAM lParam) {
    reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least_.cx, least_.cy};
    return TRUE;
}

void fSelect::onOk() {
    // Enter reaches the dialog also while its default button is disabled.
    if (!::IsWindowEnabled(control(IDOK))) return;
    browser_.reportSelection();
    presenter_.onOk();
}

void fSelect::enableOk(bool enabled) { ::EnableWindow(control(IDOK), enabled ? TRUE : FALSE); }

}  // namespace tovar
