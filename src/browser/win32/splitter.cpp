#include "browser/win32/splitter.h"

#include <algorithm>

#include "shell/win32/dpi.h"

namespace tovar {
namespace {

constexpr int kBarWidth = 5, kLeastPane = 80;  // at 96 dots per inch
constexpr int kShare = 28;                     // per cent

}  // namespace

void Splitter::layOut(const RECT& area, int dpi) {
    area_ = area;
    const int width = std::max<int>(area.right - area.left, 0);
    const int barWidth = scaled(kBarWidth, dpi);
    const int wanted = chosen_ >= 0 ? chosen_ : width * kShare / 100;
    const int most = std::max(width - barWidth - scaled(kLeastPane, dpi), 0);
    const int left = area.left + std::clamp(wanted, std::min(scaled(kLeastPane, dpi), most), most);
    bar_ = {left, area.top, left + barWidth, area.bottom};
}

void Splitter::beginDrag(int x) noexcept {
    grip_ = x - bar_.left;
    dragging_ = true;
}

bool Splitter::drag(int x) noexcept {
    const int wanted = std::max<int>(x - grip_ - area_.left, 0);
    if (!dragging_ || wanted == chosen_) return false;
    chosen_ = wanted;
    return true;
}

}  // namespace tovar
