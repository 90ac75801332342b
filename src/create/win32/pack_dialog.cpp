#include "create/win32/pack_dialog.h"

#include <commctrl.h>

#include <algorithm>

#include "create/win32/file_dialogs.h"
#include "create/win32/messages_dialog.h"
#include "create/win32/pack_dialog_controls.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"
#include "shell/win32/window.h"

namespace tovar {
namespace {

constexpr UINT_PTR kNameKeys = 1;
constexpr WORD kDeleteNames = 0x100;  ///< a notification of our own: the Delete key in the list of names

/// Lets the Delete key take names out of the list.
LRESULT CALLBACK nameList(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_KEYDOWN && wParam == VK_DELETE) {
        ::SendMessageW(::GetParent(list), WM_COMMAND, MAKEWPARAM(IDC_CMD_ARC_LIST, kDeleteNames),
                       reinterpret_cast<LPARAM>(list));
        return 0;
    }
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(list, &nameList, id);
    return ::DefSubclassProc(list, message, wParam, lParam);
}

/// Closes what a dialog has opened over itself: another dialog, or a message box.
BOOL CALLBACK closeIfAbove(HWND window, LPARAM dialog) {
    const bool above = ::GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(dialog);
    if (above && ::IsWindowVisible(window)) ::PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

int boxOf(PackOption option) { return IDC_CHK_ARC + static_cast<int>(option); }

/// How far a list of names can be scrolled to the side.
int widestOf(HWND list, const std::vector<std::wstring>& names) {
    const auto longest = std::ranges::max_element(names, {}, &std::wstring::size);
    if (longest == names.end()) return 0;
    const HDC screen = ::GetDC(list);
    const HGDIOBJ before = ::SelectObject(screen, reinterpret_cast<HGDIOBJ>(::SendMessageW(list, WM_GETFONT, 0, 0)));
    SIZE extent{};
    const std::size_t shown = std::min<std::size_t>(longest->size(), 8192);
    ::GetTextExtentPoint32W(screen, longest->c_str(), static_cast<int>(shown), &extent);
    ::SelectObject(screen, before);
    ::ReleaseDC(list, screen);
    return extent.cx + 8;
}

}  // namespace

void fArcPack::ask() { showModal(static_cast<HWND>(job_.owner), IDD_ARC_PACK, fontName_); }

void fArcPack::cancel() noexcept {
    if (hwnd() == nullptr) return;
    ::EnumThreadWindows(::GetCurrentThreadId(), &closeIfAbove, reinterpret_cast<LPARAM>(hwnd()));
    ::EndDialog(hwnd(), IDCANCEL);
}

void fArcPack::bringToFront() noexcept {
    if (hwnd() != nullptr && ::IsWindowVisible(hwnd())) ::SetForegroundWindow(::GetLastActivePopup(hwnd()));
}

void fArcPack::onLoad() {
    anchors_.begin(hwnd(), {{IDC_GRP_OPTION, kLeft | kRight},
                            {IDC_TXT_ARC_FILE, kLeft | kRight},
                            {IDC_CMD_ARC_FILE, kRight},
                            {IDC_LST_ARC_LIST, kLeft | kTop | kRight | kBottom},
                            {IDC_CMD_ARC_LIST, kRight},
                            {IDOK, kRight | kBottom},
                            {IDCANCEL, kRight | kBottom}});
    ::SetWindowSubclass(control(IDC_LST_ARC_LIST), &nameList, kNameKeys, 0);
    ::SendMessageW(control(IDC_TXT_ARC_FILE), EM_SETLIMITTEXT, 0, 0);
    CenterDialog(hwnd(), ::GetAncestor(static_cast<HWND>(job_.owner), GA_ROOT));
    keepOnScreen(hwnd());
    presenter_.onLoad();
}

bool fArcPack::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fArcPack> routes[] = {
        {IDOK, BN_CLICKED, &fArcPack::onOk},
        {IDCANCEL, BN_CLICKED, &fArcPack::onCancel},
        {IDC_CMB_PACKER, CBN_SELCHANGE, &fArcPack::onPacker},
        {IDC_CMB_ACTION, CBN_SELCHANGE, &fArcPack::onAction},
        {IDC_CMB_LEVEL, CBN_SELCHANGE, &fArcPack::onLevel},
        {IDC_CHK_ARC, BN_CLICKED, &fArcPack::onRecurse},
        {IDC_CHK_ARC_FOLDER_INFO, BN_CLICKED, &fArcPack::onFolderInfo},
        {IDC_CHK_ARC_PASSWORD, BN_CLICKED, &fArcPack::onPassword},
        {IDC_CHK_ARC_SYSTEM, BN_CLICKED, &fArcPack::onSystem},
        {IDC_CHK_ARC_FULL_MESSAGE, BN_CLICKED, &fArcPack::onFullMessage},
        {IDC_TXT_ARC_FILE, EN_CHANGE, &fArcPack::onArchive},
        {IDC_CMD_ARC_FILE, BN_CLICKED, &fArcPack::onBrowse},
        {IDC_CMD_ARC_LIST, BN_CLICKED, &fArcPack::onPickNames},
        {IDC_CMD_ARC_LIST, kDeleteNames, &fArcPack::onRemoveNames},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fArcPack::onMessage(UINT message, WPARAM, LPARAM lParam) {
    return anchors_.onMessage(message, lParam);
}

void fArcPack::onPacker() { presenter_.onPacker(selected(IDC_CMB_PACKER)); }

void fArcPack::onAction() { presenter_.onAction(selected(IDC_CMB_ACTION)); }

void fArcPack::onLevel() { presenter_.onLevel(selected(IDC_CMB_LEVEL)); }

void fArcPack::onOption(PackOption option) {
    presenter_.onOption(option, ::IsDlgButtonChecked(hwnd(), boxOf(option)) == BST_CHECKED);
}

void fArcPack::onArchive() { presenter_.onArchive(textOf(control(IDC_TXT_ARC_FILE))); }

void fArcPack::onRemoveNames() {
    const HWND list = control(IDC_LST_ARC_LIST);
    std::vector<int> indexes(
        static_cast<std::size_t>(std::max<LRESULT>(::SendMessageW(list, LB_GETSELCOUNT, 0, 0), 0)));
    const LRESULT count =
        ::SendMessageW(list, LB_GETSELITEMS, indexes.size(), reinterpret_cast<LPARAM>(indexes.data()));
    indexes.resize(static_cast<std::size_t>(std::max<LRESULT>(count, 0)));
    presenter_.onRemoveNames(indexes);
}

void fArcPack::fillPackers(const std::vector<std::wstring_view>& texts) { fill(IDC_CMB_PACKER, texts); }

void fArcPack::fillActions(const std::vector<std::wstring_view>& texts) { fill(IDC_CMB_ACTION, texts); }

void fArcPack::fillLevels(const std::vector<PackLevel>& levels) {
    std::vector<std::wstring_view> texts;
    for (const PackLevel& level : levels) texts.push_back(level.text);
    fill(IDC_CMB_LEVEL, texts);
    for (std::size_t each = 0; each < levels.size(); ++each) {
        ::SendMessageW(control(IDC_CMB_LEVEL), CB_SETITEMDATA, each, levels[each].level);
    }
}

void fArcPack::selectPacker(int index) { select(IDC_CMB_PACKER, index); }

void fArcPack::selectAction(int index) { select(IDC_CMB_ACTION, index); }

void fArcPack::selectLevel(int index) { select(IDC_CMB_LEVEL, index); }

void fArcPack::enableAction(bool enabled) {
    enable(IDC_LBL_ACTION, enabled);
    enable(IDC_CMB_ACTION, enabled);
}

void fArcPack::enableLevel(bool enabled) {
    enable(IDC_LBL_LEVEL, enabled);
    enable(IDC_CMB_LEVEL, enabled);
}

void fArcPack::enableOption(PackOption option, bool enabled) { enable(boxOf(option), enabled); }

void fArcPack::checkOption(PackOption option, bool checked) {
    ::CheckDlgButton(hwnd(), boxOf(option), checked ? BST_CHECKED : BST_UNCHECKED);
}

void fArcPack::setArchive(std::wstring_view path) {
    ::SetWindowTextW(control(IDC_TXT_ARC_FILE), std::wstring(path).c_str());
}

void fArcPack::setNames(const std::vector<std::wstring>& names) {
    const HWND list = control(IDC_LST_ARC_LIST);
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& name : names) {
        ::SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    ::SendMessageW(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widestOf(list, names)), 0);
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(list, nullptr, TRUE);
}

std::wstring fArcPack::askArchive(const ArchiveQuestion& question) { return askForArchive(hwnd(), question); }

std::vector<std::wstring> fArcPack::askNames(const std::wstring& folder) { return askForFiles(hwnd(), folder); }

void fArcPack::showMessages(WindowHandle owner, std::wstring_view text) {
    MessagesDialog dialog{std::wstring(text)};
    dialog.show(static_cast<HWND>(owner), fontName_);
}

// The windows of the work belong to the owner: that one has to be able to take the focus, or another program gets it.
void fArcPack::hide() {
    ::EnableWindow(::GetAncestor(static_cast<HWND>(job_.owner), GA_ROOT), TRUE);
    ::ShowWindow(hwnd(), SW_HIDE);
}

void fArcPack::close() {
    if (hwnd() != nullptr) ::EndDialog(hwnd(), IDOK);
}

void fArcPack::fill(int list, const std::vector<std::wstring_view>& texts) {
    for (const std::wstring_view text : texts) {
        ::SendMessageW(control(list), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
    }
}

void fArcPack::select(int list, int index) {
    ::SendMessageW(control(list), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

int fArcPack::selected(int list) const { return static_cast<int>(::SendMessageW(control(list), CB_GETCURSEL, 0, 0)); }

void fArcPack::enable(int id, bool enabled) {
    const HWND window = control(id);
    // The keyboard would be lost with a control that can no longer take it.
    if (!enabled && window != nullptr && ::GetFocus() == window) ::SendMessageW(hwnd(), WM_NEXTDLGCTL, 0, FALSE);
    ::EnableWindow(window, enabled ? TRUE : FALSE);
}

}  // namespace tovar
