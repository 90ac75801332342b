#include "shell/win32/splitter.h"

#include <windowsx.h>

#include "shell/win32/message_map.h"

namespace tovar {
namespace {

bool isDown(int key) noexcept { return ::GetKeyState(key) < 0; }

}  // namespace

bool Splitter::create(HWND parent, int id, const wchar_t* name) {
    Description description;
    description.className = L"TovarExSplitter";
    description.classStyle = CS_DBLCLKS;
    description.style = WS_CHILD | WS_VISIBLE;
    description.parent = parent;
    if (!Window::create(description)) return false;
    ::SetWindowLongPtrW(hwnd(), GWLP_ID, id);
    ::SetWindowTextW(hwnd(), name);
    return true;
}

std::optional<LRESULT> Splitter::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<Splitter> routes[] = {
        {WM_SETCURSOR, &Splitter::onSetCursor},
        {WM_LBUTTONDOWN, &Splitter::onButtonDown},
        {WM_MOUSEMOVE, &Splitter::onMouseMove},
        {WM_LBUTTONUP, &Splitter::onButtonUp},
        {WM_CAPTURECHANGED, &Splitter::onCaptureLost},
        {WM_LBUTTONDBLCLK, &Splitter::onDoubleClick},
        {WM_KEYDOWN, &Splitter::onKey},
        {WM_GETDLGCODE, &Splitter::onKeysWanted},
        {WM_SETFOCUS, &Splitter::onFocusChanged},
        {WM_KILLFOCUS, &Splitter::onFocusChanged},
        {WM_ERASEBKGND, &Splitter::onErase},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

std::optional<LRESULT> Splitter::onSetCursor(WPARAM, LPARAM) {
    ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEWE));
    return TRUE;
}

std::optional<LRESULT> Splitter::onButtonDown(WPARAM, LPARAM lParam) {
    grip_ = GET_X_LPARAM(lParam);
    dragging_ = true;
    ::SetCapture(hwnd());
    return 0;
}

// The bar has moved under the mouse when the next message comes.
std::optional<LRESULT> Splitter::onMouseMove(WPARAM, LPARAM lParam) {
    if (dragging_) tellMoved(place_.moveTo(place_.left() + GET_X_LPARAM(lParam) - grip_));
    return 0;
}

std::optional<LRESULT> Splitter::onButtonUp(WPARAM, LPARAM) {
    if (dragging_) ::ReleaseCapture();
    return 0;
}

std::optional<LRESULT> Splitter::onCaptureLost(WPARAM, LPARAM) {
    dragging_ = false;
    return 0;
}

std::optional<LRESULT> Splitter::onDoubleClick(WPARAM, LPARAM) {
    tellMoved(place_.moveTo(owner_.onSplitterFit()));
    return 0;
}

std::optional<LRESULT> Splitter::onKey(WPARAM key, LPARAM) {
    switch (key) {
        case VK_TAB:
        case VK_F6:
            owner_.onSplitterLeave(isDown(VK_SHIFT));
            return 0;
        case VK_ESCAPE:
            owner_.onSplitterLeave(false);
            return 0;
        case VK_RETURN:
            return onDoubleClick(0, 0);
        default:
            tellMoved(move(key));
            return 0;
    }
}

bool Splitter::move(WPARAM key) {
    const bool finely = isDown(VK_CONTROL);
    switch (key) {
        case VK_LEFT:
            return finely ? place_.moveTo(place_.left() - 1) : place_.moveBySteps(-1);
        case VK_RIGHT:
            return finely ? place_.moveTo(place_.left() + 1) : place_.moveBySteps(1);
        case VK_HOME:
            return place_.moveToStart();
        case VK_END:
            return place_.moveToEnd();
        default:
            return false;
    }
}

void Splitter::tellMoved(bool moved) {
    if (moved) owner_.onSplitterMoved();
}

// A host that treats its window as a dialog would take these keys for itself.
std::optional<LRESULT> Splitter::onKeysWanted(WPARAM, LPARAM) { return DLGC_WANTALLKEYS; }

std::optional<LRESULT> Splitter::onFocusChanged(WPARAM, LPARAM) {
    ::InvalidateRect(hwnd(), nullptr, TRUE);
    return std::nullopt;
}

std::optional<LRESULT> Splitter::onErase(WPARAM device, LPARAM) {
    RECT area;
    if (!::GetClientRect(hwnd(), &area)) return std::nullopt;
    const int colour = ::GetFocus() == hwnd() ? COLOR_HIGHLIGHT : COLOR_BTNFACE;
    ::FillRect(reinterpret_cast<HDC>(device), &area, ::GetSysColorBrush(colour));
    return TRUE;
}

}  // namespace tovar
