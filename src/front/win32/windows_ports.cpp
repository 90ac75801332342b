#include "front/win32/windows_ports.h"

#include <windows.h>

#include "front/win32/message_watch.h"
#include "shell/win32/pending_messages.h"

namespace tovar {
namespace {

HWND asWindow(WindowHandle window) noexcept { return static_cast<HWND>(window); }

PixelSize sizeOfRectangle(const RECT& rectangle) noexcept {
    return {rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
}

/// Lets the window below the pointer choose its own shape again; one of another thread does so by itself.
void askForPointer() {
    POINT place{};
    if (!::GetCursorPos(&place)) return;
    const HWND window = ::WindowFromPoint(place);
    if (window == nullptr || ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId()) return;
    const LRESULT part = ::SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(place.x, place.y));
    ::SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(part, WM_MOUSEMOVE));
}

}  // namespace

bool WindowsWindowSystem::isWindow(WindowHandle window) const {
    return window != nullptr && ::IsWindow(asWindow(window)) != FALSE;
}

PixelSize WindowsWindowSystem::sizeOf(WindowHandle window) const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (::IsIconic(asWindow(window)) && ::GetWindowPlacement(asWindow(window), &placement)) {
        return sizeOfRectangle(placement.rcNormalPosition);
    }
    RECT rectangle{};
    ::GetWindowRect(asWindow(window), &rectangle);
    return sizeOfRectangle(rectangle);
}

bool WindowsWindowSystem::setParent(WindowHandle window, WindowHandle parent) {
    const HWND child = asWindow(window);
    const LONG_PTR before = ::GetWindowLongPtrW(child, GWL_STYLE);
    // A child window cannot have a menu bar: one with a menu goes inside as it is.
    const bool becomesChild = (before & WS_CHILD) == 0 && ::GetMenu(child) == nullptr;
    if (becomesChild) ::SetWindowLongPtrW(child, GWL_STYLE, (before & ~static_cast<LONG_PTR>(WS_POPUP)) | WS_CHILD);
    const bool done = ::SetParent(child, asWindow(parent)) != nullptr;
    if (becomesChild && !done) ::SetWindowLongPtrW(child, GWL_STYLE, before);
    ::SetWindowPos(child, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    return done;
}

void WindowsWindowSystem::move(WindowHandle window, PixelPlace place, PixelSize size) {
    ::MoveWindow(asWindow(window), place.left, place.top, size.width, size.height, TRUE);
}

std::unique_ptr<WindowWatch> WindowsWindowSystem::watch(WindowHandle window) {
    return MessageWatch::of(asWindow(window));
}

void WindowsMousePointer::show(PointerShape shape) {
    ::SetCursor(::LoadCursorW(nullptr, shape == PointerShape::Hourglass ? IDC_WAIT : IDC_ARROW));
    if (shape == PointerShape::Default) askForPointer();
}

void WindowsMessagePump::processPending() { runPendingMessages(); }

}  // namespace tovar
