#pragma once
#include <windows.h>

namespace tovar {

/// Keeps a window from taking input while a modeless dialog stands over it, as a modal one would do by itself.
class OwnerPause {
public:
    /// @param owner  the window, or a child of it: its top-level window waits; null = none
    explicit OwnerPause(HWND owner);
    /// Does what was not done before.
    ~OwnerPause();
    OwnerPause(const OwnerPause&) = delete;
    OwnerPause& operator=(const OwnerPause&) = delete;

    /// Lets the window take input again, unless it did not before. To be called while the dialog is still there:
    /// otherwise the system activates another program when the dialog goes.
    void resume() noexcept;

    /// Gives the focus back to the control that had it. To be called once the dialog is gone, and only if it was the
    /// active window.
    void returnFocus() noexcept;

private:
    HWND root_ = nullptr;
    HWND focus_ = nullptr;
    bool disabled_ = false;
};

}  // namespace tovar
