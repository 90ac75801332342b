#pragma once
#include <windows.h>

#include <span>

namespace tovar {

/// Creates a visible control. Its text is the name by which screen readers announce it.
/// @return null on failure
HWND createControl(HWND parent, const wchar_t* className, const wchar_t* name, DWORD style, DWORD extendedStyle,
                   int id);

/// While it lives nothing of the window is painted, its scroll bars neither; then it is painted anew. A pause inside
/// another one, and one of a hidden window, does nothing.
class RedrawPause {
public:
    explicit RedrawPause(HWND window);
    ~RedrawPause();
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

private:
    HWND window_;
    bool paused_;
};

/// Where a control goes in the client area of its window, in pixels.
struct ControlPlace {
    HWND control;
    int x, y, width, height;
};

/// Moves controls of one window at once. Where the system cannot do so, they stay where they are.
/// @param flags  of SetWindowPos, in addition
void placeControls(std::span<const ControlPlace> places, UINT flags = 0);

/// A control of a dialog's template that another one takes the place of. Goes with this object.
class ReplacedControl {
public:
    /// @param id  its number in the dialog; where there is none, the place is empty
    ReplacedControl(HWND dialog, int id);
    ~ReplacedControl();
    ReplacedControl(const ReplacedControl&) = delete;
    ReplacedControl& operator=(const ReplacedControl&) = delete;

    /// @return where it is in the dialog's client area
    [[nodiscard]] const RECT& place() const noexcept { return place_; }
    /// Gives its turn for the Tab key to a window, and its font to it.
    void giveTo(HWND window) const;

private:
    HWND control_;
    RECT place_{};
};

/// While it lives the pointer shows that the user has to wait.
class BusyCursor {
public:
    BusyCursor() : previous_(::SetCursor(::LoadCursorW(nullptr, IDC_WAIT))) {}
    ~BusyCursor() { ::SetCursor(previous_); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

private:
    HCURSOR previous_;
};

}  // namespace tovar
