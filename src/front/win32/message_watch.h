#pragma once
#include <windows.h>

#include <memory>

#include "front/window_system.h"

namespace tovar {

/// Counts the messages of a window of the calling thread that are being handled, one inside the other.
class MessageWatch final : public WindowWatch {
public:
    /// @return null when the window cannot be subclassed
    [[nodiscard]] static std::unique_ptr<MessageWatch> of(HWND window);

    void whenIdle(std::function<void()> action) override;

private:
    struct Messages {
        int running = 0;
        std::function<void()> waiting;
    };

    explicit MessageWatch(std::shared_ptr<Messages> messages) : messages_(std::move(messages)) {}

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR data) noexcept;

    std::shared_ptr<Messages> messages_;
};

}  // namespace tovar
