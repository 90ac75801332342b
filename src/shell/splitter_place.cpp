#include "shell/splitter_place.h"

#include <algorithm>
#include <cstdint>

namespace tovar {
namespace {

constexpr int kBarWidth = 5, kLeastPane = 80, kStep = 8;  // at 96 dots per inch

int timesOver(int length, int times, int over) noexcept {
    return static_cast<int>((std::int64_t{length} * times + over / 2) / over);
}

}  // namespace

int SplitterPlace::scaled(int length) const noexcept { return timesOver(length, dpi_, 96); }

// Two panes that find no room for their least width share what there is.
int SplitterPlace::least() const noexcept { return std::min(scaled(kLeastPane), std::max(width_ - barWidth_, 0) / 2); }

int SplitterPlace::most() const noexcept { return std::max(width_ - barWidth_ - least(), 0); }

int SplitterPlace::withinLimits(int left) const noexcept { return std::clamp(left, least(), most()); }

void SplitterPlace::layOut(int width, int dpi) noexcept {
    if (chosen_ >= 0 && dpi != dpi_) chosen_ = timesOver(chosen_, dpi, dpi_);
    width_ = std::max(width, 0);
    dpi_ = dpi;
    barWidth_ = scaled(kBarWidth);
    left_ = withinLimits(chosen_ >= 0 ? chosen_ : timesOver(width_, share_, 100));
}

bool SplitterPlace::moveTo(int left) noexcept {
    const int place = withinLimits(left);
    if (place == left_) return false;
    chosen_ = left_ = place;
    return true;
}

bool SplitterPlace::moveBySteps(int steps) noexcept { return moveTo(left_ + steps * scaled(kStep)); }

bool SplitterPlace::moveToStart() noexcept { return moveTo(least()); }

bool SplitterPlace::moveToEnd() noexcept { return moveTo(most()); }

}  // namespace tovar
