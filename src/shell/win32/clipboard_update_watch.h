#pragma once
#include <windows.h>

#include <functional>
#include <optional>

#include "shell/win32/window.h"

namespace tovar {

/// A hidden window that hears of every change of the clipboard.
class ClipboardUpdateWatch final : private Window {
public:
    ClipboardUpdateWatch() = default;
    ~ClipboardUpdateWatch() override { destroy(); }

    /// @param onChanged  called from the thread's message loop; may call stop()
    /// @return false on failure
    bool start(std::function<void()> onChanged);
    void stop() noexcept;
    using Window::hwnd;

private:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::function<void()> onChanged_;
};

}  // namespace tovar
