#include "browser/win32/address_box.h"

#include <algorithm>

#include "browser/win32/browser_controls.h"
#include "browser/win32/text_extent.h"
#include "shell/win32/child_control.h"
#include "shell/win32/subclass.h"
#include "shell/win32/window.h"

namespace tovar {
namespace {

constexpr wchar_t kLabel[] = L"Address";

}  // namespace

bool AddressBox::create(HWND parent, AddressKeys& keys, MessageBoxes& messages) {
    label_ = createControl(parent, L"STATIC", kLabel, SS_CENTERIMAGE, 0, kAddressLabel);
    box_ = createControl(parent, L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, 0, cmbURL);
    if (label_ == nullptr || box_ == nullptr) return false;
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof parts;
    if (!::GetComboBoxInfo(box_, &parts)) return false;
    edit_ = parts.hwndItem;
    Subclass(edit_, &AddressBox::editProcedure, &keys, messages);
    return true;
}

void AddressBox::release() { Unsubclass(edit_); }

int AddressBox::labelWidth() const { return TextExtent(label_).widthOf(kLabel); }

void AddressBox::add(std::wstring_view address) {
    const std::wstring text(address);
    ::SendMessageW(box_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    widenList(TextExtent(box_).widthOf(address));
}

void AddressBox::fitList() {
    const TextExtent extent(box_);
    const auto count = ::SendMessageW(box_, CB_GETCOUNT, 0, 0);
    widestText_ = 0;
    for (LRESULT index = 0; index < count; ++index)
        widestText_ = std::max(widestText_, extent.widthOf(entry(static_cast<WPARAM>(index))));
    widenList(0);
}

// The list is at least as wide as the box, and never wider than the screen.
void AddressBox::widenList(int textWidth) {
    widestText_ = std::max(widestText_, textWidth);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    if (!::GetMonitorInfoW(::MonitorFromWindow(box_, MONITOR_DEFAULTTONEAREST), &screen)) return;
    const int around =
        ::GetSystemMetrics(SM_CXVSCROLL) + 4 * ::GetSystemMetrics(SM_CXEDGE) + 2 * ::GetSystemMetrics(SM_CXBORDER);
    const int most = static_cast<int>(screen.rcWork.right - screen.rcWork.left);
    ::SendMessageW(box_, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min(widestText_ + around, most)), 0);
}

// Of an address that is too long for the box the end says where the user is.
void AddressBox::choose(std::size_t index) {
    ::SendMessageW(box_, CB_SETCURSEL, index, 0);
    moveCaretToEnd();
}

void AddressBox::moveCaretToEnd() {
    const auto end = static_cast<WPARAM>(::GetWindowTextLengthW(edit_));
    ::SendMessageW(edit_, EM_SETSEL, end, static_cast<LPARAM>(end));
    ::SendMessageW(edit_, EM_SCROLLCARET, 0, 0);
}

std::wstring AddressBox::text() const { return textOf(edit_); }

std::wstring AddressBox::chosenText() const {
    return entry(static_cast<WPARAM>(::SendMessageW(box_, CB_GETCURSEL, 0, 0)));
}

std::wstring AddressBox::entry(WPARAM index) const {
    const LRESULT length = ::SendMessageW(box_, CB_GETLBTEXTLEN, index, 0);
    if (length == CB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT copied = ::SendMessageW(box_, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied == CB_ERR ? 0 : static_cast<std::size_t>(copied));
    return text;
}

LRESULT CALLBACK AddressBox::editProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_GETDLGCODE && wantsKey(window, lParam)) {
        return callOldProcedure(window, message, wParam, lParam) | DLGC_WANTMESSAGE;
    }
    try {
        auto* const keys = static_cast<AddressKeys*>(::GetPropW(window, kObjectPtr));
        if (keys != nullptr && onKey(*keys, window, message, wParam)) return 0;
    } catch (...) {
        return 0;
    }
    if (message != WM_DESTROY) return callOldProcedure(window, message, wParam, lParam);
    const LRESULT answer = callOldProcedure(window, message, wParam, lParam);
    Unsubclass(window);
    return answer;
}

// A host that treats its window as a dialog would take Enter and Escape for its own buttons.
bool AddressBox::wantsKey(HWND edit, LPARAM lParam) noexcept {
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    return message != nullptr && message->message == WM_KEYDOWN && !isListOpen(edit) &&
           (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE);
}

bool AddressBox::isListOpen(HWND edit) noexcept {
    return ::SendMessageW(::GetParent(edit), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

bool AddressBox::onKey(AddressKeys& keys, HWND edit, UINT message, WPARAM key) {
    const bool ours = key == VK_RETURN || key == VK_ESCAPE || key == VK_TAB;
    // An open list takes the keys itself.
    if (!ours || isListOpen(edit)) return false;
    if (message == WM_CHAR) return true;  // a field of one line would beep
    if (message != WM_KEYDOWN) return false;
    if (key == VK_RETURN) {
        keys.onAddressEnter();
    } else if (key == VK_ESCAPE) {
        keys.onAddressEscape();
    } else {
        keys.onAddressTab(::GetKeyState(VK_SHIFT) < 0);
    }
    return true;
}

}  // namespace tovar
