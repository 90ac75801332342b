#pragma once
#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace tovar::test {

/// The user's hand at the mouse: it works beside the thread whose windows take what it does.
class Pointer {
public:
    enum class End { Drop, Escape };

    /// Presses the left button, moves a little until the drag has begun, then to the other place, and lets it go.
    /// @param from   on the screen
    /// @param begun  asked in another thread
    static Pointer drag(POINT from, POINT to, End end, std::function<bool()> begun) {
        return Pointer(from, to, end, std::move(begun));
    }
    ~Pointer() {
        if (hand_.joinable()) hand_.join();
    }
    /// @return whether the hand has done all that
    [[nodiscard]] bool isDone() const { return *done_; }
    Pointer(Pointer&&) = default;
    Pointer& operator=(Pointer&&) = delete;

private:
    Pointer(POINT from, POINT to, End end, std::function<bool()> begun);

    std::shared_ptr<std::atomic<bool>> done_ = std::make_shared<std::atomic<bool>>(false);
    std::thread hand_;
};

}  // namespace tovar::test
