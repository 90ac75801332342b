#include "shell/win32/desktop_watch.h"

namespace tovar {

bool DesktopWatch::start() {
    if (hwnd() != nullptr) return true;
    Description description;
    description.className = L"TovarExDesktopWatch";
    description.style = WS_POPUP;
    description.extendedStyle = WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
    return create(description);
}

std::optional<LRESULT> DesktopWatch::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_DISPLAYCHANGE:
            listener_.onDesktopChanged(message, wParam, lParam);
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

}  // namespace tovar
