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

/// Listens to a window of the host's while it lives. The window keeps its own procedure: it is watched in the way of
/// the common controls, which many can use side by side, and let go in any order.
class HostWatch {
public:
    HostWatch() = default;
    ~HostWatch() { stop(); }
    HostWatch(const HostWatch&) = delete;
    HostWatch& operator=(const HostWatch&) = delete;

    /// @param host  a window of this thread; of another thread's nothing is heard
    void start(HWND host, HostSizeListener& listener) noexcept;
    void stop() noexcept;

private:
    static LRESULT CALLBACK procedure(HWND host, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR data) noexcept;

    HWND host_ = nullptr;
    HostSizeListener* listener_ = nullptr;
};

}  // namespace tovar
