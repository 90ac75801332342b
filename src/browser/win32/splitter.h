#pragma once
#include <windows.h>

namespace tovar {

/// The bar between two panes that stand side by side: where it is, and how it follows the mouse.
class Splitter {
public:
    /// Puts the bar into an area. Until its user moves it, it keeps its share of the area's width; then its distance
    /// from the left edge.
    /// @param dpi  dots per inch, for the bar's own width and the least width of a pane
    void layOut(const RECT& area, int dpi);

    [[nodiscard]] const RECT& bar() const noexcept { return bar_; }
    [[nodiscard]] bool contains(POINT point) const noexcept { return ::PtInRect(&bar_, point) != FALSE; }

    // A drag of the bar, in the coordinates of the area.
    void beginDrag(int x) noexcept;
    /// @return whether the panes must be laid out anew
    bool drag(int x) noexcept;
    void endDrag() noexcept { dragging_ = false; }
    [[nodiscard]] bool dragging() const noexcept { return dragging_; }

private:
    RECT bar_{};
    RECT area_{};
    int chosen_ = -1;  ///< distance from the left edge; -1 until the user moves the bar
    int grip_ = 0;
    bool dragging_ = false;
};

}  // namespace tovar
