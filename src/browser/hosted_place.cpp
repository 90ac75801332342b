#include "browser/hosted_place.h"

#include <algorithm>
#include <cmath>

namespace tovar {
namespace {

struct Extent {
    int start, length;
};

Extent follow(int start, int length, int former, int now, int least) noexcept {
    if (former <= 0) return {start, length};
    const auto share = static_cast<int>(std::lround(static_cast<double>(length) * now / former));
    const int newLength = std::max(share, std::min(length, least));
    const int leftOver = former - length;
    if (leftOver <= 0) return {std::min(start, 0), newLength};
    const auto newStart = static_cast<int>(std::lround(static_cast<double>(start) * (now - newLength) / leftOver));
    // The beginning, with the caption, stays in reach where there is no room.
    return {start >= 0 ? std::max(newStart, 0) : newStart, newLength};
}

}  // namespace

HostedPlace followHost(const HostedPlace& place, HostSize former, HostSize now, HostSize least) noexcept {
    const Extent across = follow(place.left, place.width, former.width, now.width, least.width);
    const Extent down = follow(place.top, place.height, former.height, now.height, least.height);
    return {across.start, down.start, across.length, down.length};
}

}  // namespace tovar
