#pragma once
#include <windows.h>

#include <string>

#include "shell/win32/handles.h"

namespace tovar::test {

/// A plain window of the system, not shown. Destroyed with its owner unless it has gone before.
struct DestroyIfThere {
    void operator()(HWND window) const noexcept {
        if (::IsWindow(window)) ::DestroyWindow(window);
    }
};
using TestWindow = std::unique_ptr<std::remove_pointer_t<HWND>, DestroyIfThere>;

inline TestWindow makeWindow(const wchar_t* className, DWORD style, HWND parent = nullptr, int width = 200,
                             int height = 100) {
    return TestWindow(::CreateWindowExW(0, className, L"", style, 10, 10, width, height, parent, nullptr,
                                        ::GetModuleHandleW(nullptr), nullptr));
}

inline RECT placeOf(HWND window) {
    RECT area{};
    ::GetWindowRect(window, &area);
    return area;
}

inline std::wstring faceOf(HWND control) {
    LOGFONTW description{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)), sizeof description, &description);
    return description.lfFaceName;
}

}  // namespace tovar::test
