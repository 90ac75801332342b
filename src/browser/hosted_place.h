#pragma once

namespace tovar {

/// A size in pixels.
struct HostSize {
    int width = 0, height = 0;
    friend bool operator==(const HostSize&, const HostSize&) = default;
};

/// Where a window lies in its host's window, in pixels.
struct HostedPlace {
    int left = 0, top = 0, width = 0, height = 0;
    friend bool operator==(const HostedPlace&, const HostedPlace&) = default;
};

/// Where a window goes when its host's window gets another size: it keeps its share of the host's width and height, and
/// what is left over stays shared out as it was, so that a centred window stays centred.
/// @param place   where it lay in a host of the size `former`
/// @param least   what it does not become smaller than, unless it was smaller already
[[nodiscard]] HostedPlace followHost(const HostedPlace& place, HostSize former, HostSize now, HostSize least) noexcept;

}  // namespace tovar
