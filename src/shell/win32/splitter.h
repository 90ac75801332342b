#pragma once
#include <windows.h>

#include <optional>

#include "shell/splitter_place.h"
#include "shell/win32/window.h"

namespace tovar {

/// What a splitter tells the window that it lies in.
class SplitterOwner {
public:
    virtual ~SplitterOwner() = default;
    /// The panes must be laid out anew.
    virtual void onSplitterMoved() = 0;
    /// @return where the bar shows all of the left pane's texts, in pixels from the area's left edge
    virtual int onSplitterFit() = 0;
    /// A key was pressed that leads away from the bar.
    virtual void onSplitterLeave(bool backwards) = 0;
};

/// The bar between a folder tree and a list. The mouse drags it, and a double click makes the tree as wide
/// as its texts. It can have the keyboard: the arrow keys move it, Ctrl with them by single pixels, Home and End as far
/// as it goes; Enter fits the tree like a double click. It is then painted in the colour of selections.
class Splitter final : private Window {
public:
    /// @param share  of the tree in the width of both, in per cent, until the user moves the bar
    explicit Splitter(SplitterOwner& owner, int share = 28) : owner_(owner), place_(share) {}
    ~Splitter() override { destroy(); }

    /// @param name  for screen readers
    /// @return false on failure
    bool create(HWND parent, int id, const wchar_t* name);
    using Window::hwnd;

    /// Works out where the bar is to be (see SplitterPlace); the owner puts it there.
    void layOut(int width, int dpi) noexcept { place_.layOut(width, dpi); }
    [[nodiscard]] int left() const noexcept { return place_.left(); }
    [[nodiscard]] int right() const noexcept { return place_.right(); }

private:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> onSetCursor(WPARAM, LPARAM);
    std::optional<LRESULT> onButtonDown(WPARAM, LPARAM lParam);
    std::optional<LRESULT> onMouseMove(WPARAM, LPARAM lParam);
    std::optional<LRESULT> onButtonUp(WPARAM, LPARAM);
    std::optional<LRESULT> onCaptureLost(WPARAM, LPARAM);
    std::optional<LRESULT> onDoubleClick(WPARAM, LPARAM);
    std::optional<LRESULT> onKey(WPARAM key, LPARAM);
    std::optional<LRESULT> onKeysWanted(WPARAM, LPARAM);
    std::optional<LRESULT> onFocusChanged(WPARAM, LPARAM);
    std::optional<LRESULT> onErase(WPARAM device, LPARAM);

    bool move(WPARAM key);
    void tellMoved(bool moved);

    SplitterOwner& owner_;
    SplitterPlace place_;
    int grip_ = 0;  ///< where the mouse holds the bar
    bool dragging_ = false;
};

}  // namespace tovar
