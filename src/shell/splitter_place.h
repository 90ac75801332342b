#pragma once

namespace tovar {

/// Where the bar is that stands between two panes side by side. All lengths are in pixels and counted from the left
/// edge of the area that holds both panes.
class SplitterPlace {
public:
    /// @param share  of the left pane in the area's width, in per cent, until the user moves the bar
    explicit SplitterPlace(int share = 28) noexcept : share_(share) {}

    /// Puts the bar into an area. Until its user moves it, it keeps its share of the area's width; then its distance
    /// from the left edge, which comes back when an area that became too narrow for it grows again.
    /// @param dpi  dots per inch, for the bar's own width and the least width of a pane; the chosen place scales with
    /// it
    void layOut(int width, int dpi) noexcept;

    [[nodiscard]] int left() const noexcept { return left_; }
    [[nodiscard]] int right() const noexcept { return left_ + barWidth_; }

    /// The user's choice. The bar stays where it leaves room for both panes.
    /// @return whether the bar moved
    bool moveTo(int left) noexcept;
    /// @param steps  of eight dots at 96 dots per inch; negative to the left
    bool moveBySteps(int steps) noexcept;
    bool moveToStart() noexcept;
    bool moveToEnd() noexcept;

private:
    [[nodiscard]] int least() const noexcept;
    [[nodiscard]] int most() const noexcept;
    [[nodiscard]] int withinLimits(int left) const noexcept;
    [[nodiscard]] int scaled(int length) const noexcept;

    int share_;
    int width_ = 0, dpi_ = 96;
    int left_ = 0, barWidth_ = 0;
    int chosen_ = -1;  ///< -1 until the user moves the bar
};

}  // namespace tovar
