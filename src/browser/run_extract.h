#pragma once
#include "browser/extraction_progress.h"
#include "drivers/archive_driver.h"
#include "shell/message_boxes.h"
#include "shell/message_pump.h"

namespace tovar {

/// Every extraction of the browser ends here. One at a time: a library lets pending messages run while it works, so
/// that a second one may be asked for meanwhile.
class Extraction {
public:
    /// All of it outlives the object.
    /// @param progress  shows how it gets on where the library does not
    Extraction(MessageBoxes& messages, MessagePump& pump, ProgressDialogs& progress,
               ExtractionClock clock = &steadyMilliseconds)
        : messages_(messages), pump_(pump), progress_(progress), clock_(std::move(clock)) {}

    /// Has the driver unpack members and tells the user when its library reports an error. Never throws.
    /// @return whether the library reported success; always true of a kind without command lines, whose driver has
    ///         told of failures itself; false while another extraction runs
    bool RunExtract(ArchiveDriver& driver, const ExtractRequest& request) noexcept;

    [[nodiscard]] bool running() const noexcept { return running_; }

    /// The window of the extraction that runs is gone. Libraries with command lines notice that by themselves; the
    /// others end at the next piece of data. No message follows: there is nobody to read it.
    void cancel() noexcept { cancelled_ = running_; }
    /// Whether the last extraction was cancelled so.
    [[nodiscard]] bool cancelled() const noexcept { return cancelled_; }

private:
    MessageBoxes& messages_;
    MessagePump& pump_;
    ProgressDialogs& progress_;
    ExtractionClock clock_;
    bool running_ = false;
    bool cancelled_ = false;
};

}  // namespace tovar
