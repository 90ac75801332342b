#pragma once
#include "front/ports.h"
#include "front/window_system.h"

namespace tovar {

/// The windows of Windows.
class WindowsWindowSystem final : public WindowSystem {
public:
    [[nodiscard]] bool isWindow(WindowHandle window) const override;
    [[nodiscard]] PixelSize sizeOf(WindowHandle window) const override;
    bool setParent(WindowHandle window, WindowHandle parent) override;
    void move(WindowHandle window, PixelPlace place, PixelSize size) override;
    [[nodiscard]] std::unique_ptr<WindowWatch> watch(WindowHandle window) override;
};

/// The pointer of the calling thread's windows.
class WindowsMousePointer final : public MousePointer {
public:
    void show(PointerShape shape) override;
};

/// The queue of the calling thread.
class WindowsMessagePump final : public MessagePump {
public:
    void processPending() override;
};

}  // namespace tovar
