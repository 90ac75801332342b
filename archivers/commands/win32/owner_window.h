#pragma once
#include <windows.h>

namespace archiver {

/// The owner window of a command: disabled while the object lives, as the convention asks, and enabled again by
/// whichever way that ends, unless it was disabled before. The focus then returns to where it was. Only the window
/// itself is disabled, not the one that it is part of.
class OwnerWindow {
public:
    /// @param window  null, gone, or of a thread that does not answer: the command has none
    explicit OwnerWindow(HWND window) noexcept;
    ~OwnerWindow();
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;

    [[nodiscard]] HWND window() const noexcept { return window_; }
    [[nodiscard]] bool gone() const noexcept { return window_ != nullptr && !::IsWindow(window_); }

    /// Enables the window: before windows over it go, so that it becomes the active one and not another program's.
    void enable() noexcept;

private:
    void restoreFocus() const noexcept;

    HWND window_;
    HWND focus_ = nullptr;
    bool disabled_ = false;
};

}  // namespace archiver
