#include "shell/win32/form_placement.h"

#include <algorithm>

namespace tovar {
namespace {

SIZE sizeOf(const RECT& area) { return {area.right - area.left, area.bottom - area.top}; }

}  // namespace

int centredOffset(int outer, int inner) noexcept {
    const int difference = outer - inner;
    const int half = difference / 2;
    const bool rounds = difference % 2 != 0 && half % 2 != 0;
    if (!rounds) return half;
    return difference > 0 ? half + 1 : half - 1;
}

void CenterDialog(HWND dialog, HWND owner) {
    RECT own, around{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    if (!::GetWindowRect(dialog, &own)) return;
    if (owner != nullptr && !::GetWindowRect(owner, &around)) return;
    const SIZE size = sizeOf(own), room = sizeOf(around);
    ::SetWindowPos(dialog, nullptr, around.left + centredOffset(room.cx, size.cx),
                   around.top + centredOffset(room.cy, size.cy), 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void keepOnScreen(HWND window) {
    RECT place{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!::GetWindowRect(window, &place) ||
        !::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) {
        return;
    }
    const RECT& screen = monitor.rcWork;
    const LONG left = std::max(std::min(place.left, screen.right - (place.right - place.left)), screen.left);
    const LONG top = std::max(std::min(place.top, screen.bottom - (place.bottom - place.top)), screen.top);
    ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void EmbedForm(HWND form, HWND container, bool fit) {
    const LONG_PTR style = ::GetWindowLongPtrW(form, GWL_STYLE);
    ::SetWindowLongPtrW(form, GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_POPUP)) | WS_CHILD);
    if (::SetParent(form, container) == nullptr) {
        ::SetWindowLongPtrW(form, GWL_STYLE, style);
        return;
    }
    RECT room;
    if (!fit || !::GetClientRect(container, &room)) return;
    ::SetWindowPos(form, nullptr, 0, 0, room.right, room.bottom, SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace tovar
