#pragma once
#include <functional>
#include <memory>

#include "shell/window_handle.h"

namespace tovar {

/// Sizes and places of windows are pixels here, places relative to the parent's client area.
struct PixelSize {
    int width = 0, height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

struct PixelPlace {
    int left = 0, top = 0;
    friend bool operator==(const PixelPlace&, const PixelPlace&) = default;
};

/// Knows when a window is at work. A host may drop the component while one of its windows handles a message; what
/// belongs to the window must stay until the message is done.
class WindowWatch {
public:
    virtual ~WindowWatch() = default;
    /// Runs the action when none of the window's messages is being handled: at once, or as soon as the last one is
    /// done. At most one action waits. The watch may be deleted in it.
    virtual void whenIdle(std::function<void()> action) = 0;
};

/// What placing and keeping windows needs of the system.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;
    [[nodiscard]] virtual bool isWindow(WindowHandle window) const = 0;
    /// Outer size; of a minimized window the size that it gets back.
    [[nodiscard]] virtual PixelSize sizeOf(WindowHandle window) const = 0;
    /// @return false when the system refuses; the window is as it was then
    virtual bool setParent(WindowHandle window, WindowHandle parent) = 0;
    virtual void move(WindowHandle window, PixelPlace place, PixelSize size) = 0;
    /// @return null when the window cannot be watched
    [[nodiscard]] virtual std::unique_ptr<WindowWatch> watch(WindowHandle window) = 0;
};

}  // namespace tovar
