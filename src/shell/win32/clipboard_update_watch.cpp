#include "shell/win32/clipboard_update_watch.h"

#include <utility>

namespace tovar {

bool ClipboardUpdateWatch::start(std::function<void()> onChanged) {
    onChanged_ = std::move(onChanged);
    if (hwnd() != nullptr) return true;
    Description description;
    description.className = L"TovarExClipboardWatch";
    description.style = WS_POPUP;
    description.extendedStyle = WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
    return create(description) && ::AddClipboardFormatListener(hwnd()) != FALSE;
}

void ClipboardUpdateWatch::stop() noexcept { destroy(); }

std::optional<LRESULT> ClipboardUpdateWatch::onMessage(UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_CLIPBOARDUPDATE: {
            // It may be replaced or go while it runs.
            const std::function<void()> onChanged = onChanged_;
            if (onChanged) onChanged();
            return 0;
        }
        case WM_DESTROY:
            ::RemoveClipboardFormatListener(hwnd());
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

}  // namespace tovar
