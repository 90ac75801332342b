#include "front/place_in_host.h"

#include <cmath>

namespace tovar {
namespace {

constexpr double kShareOfHost = 0.6;

}  // namespace

int hostShareInPixels(double factor, std::optional<double> extent, int pixels) noexcept {
    double unit = 1;  // pixels in one of the host's units
    double whole = pixels;
    if (extent && std::isnormal(*extent) && *extent > 0 && std::isnormal(pixels / *extent)) {
        whole = *extent;
        unit = pixels / whole;
    }
    return static_cast<int>(std::lround(factor * whole * unit));
}

void PlaceInHost(WindowHandle window, HostWindow* fParent, bool resize, WindowSystem& windows) {
    if (fParent == nullptr) return;
    const WindowHandle parent = fParent->hWnd();
    if (parent == nullptr || parent == window || !windows.isWindow(parent)) return;
    const PixelSize host = windows.sizeOf(parent);
    PixelSize size = windows.sizeOf(window);
    if (resize) {
        // Hosts measure in twips, pixels or units of their own; the real window gives the scale.
        size = {hostShareInPixels(kShareOfHost, fParent->Width(), host.width),
                hostShareInPixels(kShareOfHost, fParent->Height(), host.height)};
    }
    if (!windows.setParent(window, parent)) return;
    windows.move(window, {(host.width - size.width) / 2, (host.height - size.height) / 2}, size);
}

}  // namespace tovar
