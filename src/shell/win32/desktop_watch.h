#pragma once
#include <windows.h>

#include <optional>

#include "shell/win32/window.h"

namespace tovar {

/// Hears of changes of the desktop: colours, fonts, visual style, screens.
class DesktopListener {
public:
    virtual ~DesktopListener() = default;
    /// @param message  WM_SETTINGCHANGE, WM_SYSCOLORCHANGE, WM_THEMECHANGED or WM_DISPLAYCHANGE, with its parameters
    virtual void onDesktopChanged(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};

/// The system tells such changes to top-level windows alone. For a window inside a host's, a hidden one listens.
class DesktopWatch final : private Window {
public:
    /// @param listener  outlives the watch
    explicit DesktopWatch(DesktopListener& listener) : listener_(listener) {}
    ~DesktopWatch() override { destroy(); }

    /// @return false on failure
    bool start();
    void stop() noexcept { destroy(); }
    using Window::hwnd;

private:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    DesktopListener& listener_;
};

}  // namespace tovar
