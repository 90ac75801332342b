#pragma once
#include <windows.h>

namespace tovar {

/// Hears of the new size of a host's window.
class HostSizeListener {
public:
    virtual ~HostSizeListener() = default;
    /// The host has dealt with its new size itself already.
    virtual void onHostSized() = 0;
};

/// Follows the size of a window of the host's by looking at it every few moments. Nothing is left in the host's own
/// window procedure: the host may unload the component within it, and would come back to code that has gone.
class HostWatch {
public:
    HostWatch() = default;
    ~HostWatch() { stop(); }
    HostWatch(const HostWatch&) = delete;
    HostWatch& operator=(const HostWatch&) = delete;

    /// @param window    of this thread; hands each WM_TIMER to `onTimer`
    /// @param listener  outlives the watch
    void start(HWND window, HWND host, HostSizeListener& listener) noexcept;
    void stop() noexcept;

    /// @param timer  of the message; other timers than the watch's own are passed over
    void onTimer(UINT_PTR timer);

    static constexpr UINT_PTR kTimer = 0x7A01;

private:
    [[nodiscard]] SIZE sizeOfHost() const noexcept;

    HWND window_ = nullptr, host_ = nullptr;
    HostSizeListener* listener_ = nullptr;
    SIZE size_{};
};

}  // namespace tovar
