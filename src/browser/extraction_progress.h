#pragma once
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "drivers/extraction.h"
#include "shell/arc_progress.h"
#include "shell/message_pump.h"

namespace tovar {

/// Time since any fixed point.
using ExtractionClock = std::function<std::chrono::milliseconds()>;
[[nodiscard]] std::chrono::milliseconds steadyMilliseconds();

/// Shows how an extraction gets on whose library has no window of its own, and lets messages run meanwhile. The dialog
/// comes up when half a second of work has passed, as that of the other libraries does.
class ExtractionProgress {
public:
    /// All but the request outlive the object.
    ExtractionProgress(ProgressDialogs& dialogs, MessagePump& pump, const ExtractionClock& clock,
                       const ExtractRequest& request);

    /// May be called for every piece of data: most calls only look at the clock.
    /// @return false once the user has given up
    [[nodiscard]] bool step(const ExtractProgress& progress);

private:
    void show();

    ProgressDialogs& dialogs_;
    MessagePump& pump_;
    const ExtractionClock& clock_;
    const WindowHandle owner_;
    const std::wstring archive_;  ///< its name
    const std::chrono::milliseconds begin_;
    std::chrono::milliseconds last_;  ///< when messages ran
    std::unique_ptr<ArcProgress> dialog_;
};

}  // namespace tovar
