#pragma once
#include <optional>

#include "shell/window_handle.h"

namespace tovar {

/// The object that a host passes as `fParent`. Its properties are read by name whenever they are needed; one that
/// cannot be read, or is of no use, reads as null or nullopt. No call throws.
class HostWindow {
public:
    virtual ~HostWindow() = default;
    [[nodiscard]] virtual WindowHandle hWnd() = 0;
    /// In the host's own unit, whatever that is.
    [[nodiscard]] virtual std::optional<double> Width() = 0;
    [[nodiscard]] virtual std::optional<double> Height() = 0;
};

/// Sizes and places of windows are pixels here, places relative to the parent's client area.
struct PixelSize {
    int width = 0, height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

struct PixelPlace {
    int left = 0, top = 0;
    friend bool operator==(const PixelPlace&, const PixelPlace&) = default;
};

/// What placing a window needs of the system.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;
    [[nodiscard]] virtual bool isWindow(WindowHandle window) const = 0;
    /// Outer size; of a minimized window the size that it gets back.
    [[nodiscard]] virtual PixelSize sizeOf(WindowHandle window) const = 0;
    /// @return false when the system refuses; the window is as it was then
    virtual bool setParent(WindowHandle window, WindowHandle parent) = 0;
    virtual void move(WindowHandle window, PixelPlace place, PixelSize size) = 0;
};

/// A share of a host's extent, in pixels.
/// @param factor  the share, such as 0.6
/// @param extent  the host's Width or Height in its own unit; one that is no positive number counts as pixels
/// @param pixels  the same extent of the host's real window
[[nodiscard]] int hostShareInPixels(double factor, std::optional<double> extent, int pixels) noexcept;

/// Makes a window a child of the host's and centres it there.
/// @param fParent  null, or without a window of the system: nothing is changed
/// @param resize   give the window 0.6 times the host's size
void PlaceInHost(WindowHandle window, HostWindow* fParent, bool resize, WindowSystem& windows);

}  // namespace tovar
