#include "shell/win32/child_control.h"

#include <cstdint>

#include "shell/win32/module_instance.h"

namespace tovar {

HWND createControl(HWND parent, const wchar_t* className, const wchar_t* name, DWORD style, DWORD extendedStyle,
                   int id) {
    return ::CreateWindowExW(extendedStyle, className, name, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                             reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)), moduleInstance(), nullptr);
}

RedrawPause::RedrawPause(HWND window) : window_(window) { ::SendMessageW(window_, WM_SETREDRAW, FALSE, 0); }

RedrawPause::~RedrawPause() {
    ::SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(window_, nullptr, TRUE);
}

}  // namespace tovar
