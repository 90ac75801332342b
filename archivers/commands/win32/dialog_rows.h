#pragma once
#include <windows.h>

#include "archivers/commands/win32/screen_metrics.h"

namespace archiver {

/// Distances in dialog units, as the system's own dialogs have them.
namespace distance {
inline constexpr int kMargin = 7, kLine = 8, kGap = 4, kIndent = 6;
}

/// Where the next row of a dialog comes.
class Rows {
public:
    Rows(const DialogUnits& units, int left, int right) : units_(units), left_(left), right_(right) {}

    [[nodiscard]] int top() const noexcept { return y_; }
    void skip(int verticalUnits) noexcept { y_ += units_.y(verticalUnits); }
    void next(int verticalUnits = distance::kLine + distance::kGap) noexcept { skip(verticalUnits); }

    template <class Place>
    void row(Place place, HWND control) noexcept {
        place(control, left_, y_, right_ - left_, units_.y(distance::kLine));
        next();
    }
    template <class Place>
    void row(Place place, HWND label, int labels, HWND value) noexcept {
        const int from = left_ + labels + units_.x(distance::kIndent);
        place(label, left_, y_, labels, units_.y(distance::kLine));
        place(value, from, y_, right_ - from, units_.y(distance::kLine));
        next();
    }

private:
    const DialogUnits& units_;
    int left_, right_;
    int y_ = units_.y(distance::kMargin);
};

}  // namespace archiver
