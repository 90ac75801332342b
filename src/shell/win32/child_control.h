#pragma once
#include <windows.h>

namespace tovar {

/// Creates a visible control. Its text is the name by which screen readers announce it.
/// @return null on failure
HWND createControl(HWND parent, const wchar_t* className, const wchar_t* name, DWORD style, DWORD extendedStyle,
                   int id);

/// While it lives the window does not repaint; then it is painted anew.
class RedrawPause {
public:
    explicit RedrawPause(HWND window);
    ~RedrawPause();
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

private:
    HWND window_;
};

}  // namespace tovar
