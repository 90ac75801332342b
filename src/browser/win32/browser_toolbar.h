#pragma once
#include <windows.h>

namespace tovar {

/// The browser window's toolbar. Its buttons send WM_COMMAND with their identifier (browser_controls.h).
class BrowserToolbar {
public:
    /// @return false on failure
    bool create(HWND parent);
    [[nodiscard]] HWND hwnd() const noexcept { return toolbar_; }

    void enable(int button, bool enabled);
    /// @return what the buttons need, in pixels
    [[nodiscard]] SIZE size() const;

private:
    HWND toolbar_ = nullptr;
};

}  // namespace tovar
