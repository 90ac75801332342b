#pragma once
#include <windows.h>
// windows.h first
#include <psapi.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

namespace tovar::bench {

using Clock = std::chrono::steady_clock;

inline double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

inline double peakMebibytes() {
    PROCESS_MEMORY_COUNTERS memory{};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &memory, sizeof memory);
    return static_cast<double>(memory.PeakWorkingSetSize) / (1 << 20);
}

/// Measures how long a message of another program, or a key, would wait for the thread that made the object: a thread
/// of its own posts a message, waits for the answer, and posts the next one a millisecond later.
class WaitProbe {
public:
    WaitProbe() {
        WNDCLASSW description{};
        description.lpfnWndProc = &procedure;
        description.hInstance = ::GetModuleHandleW(nullptr);
        description.lpszClassName = L"WaitProbe";
        ::RegisterClassW(&description);
        window_ = ::CreateWindowExW(0, description.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                    description.hInstance, nullptr);
        ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(answered_));
        thread_ = std::thread([this] { probe(); });
    }
    ~WaitProbe() {
        stopped_ = true;
        ::SetEvent(answered_);
        thread_.join();
        ::DestroyWindow(window_);
        ::CloseHandle(answered_);
    }
    WaitProbe(const WaitProbe&) = delete;
    WaitProbe& operator=(const WaitProbe&) = delete;

    void restart() {
        longest_ = 0;
        begin_ = Clock::now();
    }
    /// @return milliseconds; the message that waits now counts too
    [[nodiscard]] double longest() {
        processMessages();
        return longest_;
    }

    static void processMessages() {
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }

private:
    static constexpr UINT kAnswer = WM_APP;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        if (message != kAnswer) return ::DefWindowProcW(window, message, wParam, lParam);
        ::SetEvent(reinterpret_cast<HANDLE>(::GetWindowLongPtrW(window, GWLP_USERDATA)));
        auto* const probe = reinterpret_cast<WaitProbe*>(lParam);
        const double waited = millisecondsSince(std::max(probe->posted_.load(), probe->begin_));
        probe->longest_ = std::max(probe->longest_, waited);
        return 0;
    }
    void probe() {
        while (!stopped_) {
            posted_ = Clock::now();
            ::PostMessageW(window_, kAnswer, 0, reinterpret_cast<LPARAM>(this));
            ::WaitForSingleObject(answered_, INFINITE);
            ::Sleep(1);
        }
    }

    HWND window_ = nullptr;
    HANDLE answered_ = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::atomic<Clock::time_point> posted_{};
    Clock::time_point begin_ = Clock::now();  ///< of the thread with the window, like the next
    double longest_ = 0;
    std::atomic<bool> stopped_ = false;
    std::thread thread_;
};

/// Prints one line: what, milliseconds, and the longest wait of a message. Fields are separated by tabs.
template <class Work>
void measure(WaitProbe& probe, const char* what, const Work& work) {
    WaitProbe::processMessages();
    probe.restart();
    const auto begin = Clock::now();
    work();
    WaitProbe::processMessages();  // some work goes on with messages of its own
    const double milliseconds = millisecondsSince(begin);
    std::printf("%s\t%.1f\t%.1f\n", what, milliseconds, probe.longest());
    std::fflush(stdout);
}

}  // namespace tovar::bench
