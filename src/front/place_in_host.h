#pragma once
#include <optional>

#include "front/window_system.h"
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
