#include "shell/win32/child_control.h"

#include <cstdint>

#include "shell/win32/module_instance.h"

namespace tovar {

HWND createControl(HWND parent, const wchar_t* className, const wchar_t* name, DWORD style, DWORD extendedStyle,
                   int id) {
    return ::CreateWindowExW(extendedStyle, className, name, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                             reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)), moduleInstance(), nullptr);
}

RedrawPause::RedrawPause(HWND window)
    : window_(window), paused_((::GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0) {
    if (!paused_) return;
    ::SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    // Some controls stop only their own painting. The scroll bars are the system's: it draws them anew for every column
    // and row that is added.
    ::DefWindowProcW(window_, WM_SETREDRAW, FALSE, 0);
}

RedrawPause::~RedrawPause() {
    if (!paused_) return;
    ::DefWindowProcW(window_, WM_SETREDRAW, TRUE, 0);
    ::SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    ::RedrawWindow(window_, nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void placeControls(std::span<const ControlPlace> places, UINT flags) {
    HDWP positions = ::BeginDeferWindowPos(static_cast<int>(places.size()));
    for (const ControlPlace& place : places) {
        if (positions == nullptr) return;
        positions = ::DeferWindowPos(positions, place.control, nullptr, place.x, place.y, place.width, place.height,
                                     SWP_NOZORDER | SWP_NOACTIVATE | flags);
    }
    if (positions != nullptr) ::EndDeferWindowPos(positions);
}

ReplacedControl::ReplacedControl(HWND dialog, int id) : control_(::GetDlgItem(dialog, id)) {
    if (control_ == nullptr) return;
    ::GetWindowRect(control_, &place_);
    ::MapWindowPoints(HWND_DESKTOP, dialog, reinterpret_cast<POINT*>(&place_), 2);
}

ReplacedControl::~ReplacedControl() {
    if (control_ != nullptr) ::DestroyWindow(control_);
}

void ReplacedControl::giveTo(HWND window) const {
    if (control_ == nullptr) return;
    ::SetWindowPos(window, control_, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ::SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(::SendMessageW(control_, WM_GETFONT, 0, 0)), TRUE);
}

}  // namespace tovar
