#pragma once
#include <chrono>

#include "shell/breather.h"

namespace tovar {

/// Lets the calling thread's pending window messages run every 20 milliseconds. A request to end the program is left
/// for its owner.
class MessageBreather final : public Breather {
public:
    void begin() override;
    [[nodiscard]] bool breathe() override;

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point last_{};  ///< when messages ran last, or work began
};

}  // namespace tovar
