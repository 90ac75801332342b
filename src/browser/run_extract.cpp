#include "browser/run_extract.h"

#include <exception>

#include "shell/scoped_flag.h"

namespace tovar {
namespace {

constexpr std::wstring_view kTitle = L"Extraction Message";

/// Tells someone how an extraction gets on while it lives.
class Told {
public:
    Told(ArchiveDriver& driver, ExtractProgressSink sink) : driver_(driver) { driver_.setProgress(std::move(sink)); }
    ~Told() { driver_.setProgress({}); }
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;

private:
    ArchiveDriver& driver_;
};

}  // namespace

bool Extraction::RunExtract(ArchiveDriver& driver, const ExtractRequest& request) noexcept {
    if (running_) return false;
    const ScopedFlag running(running_);
    cancelled_ = false;
    bool good = false;
    try {
        if (driver.description().hasCommandLine) {
            const ExtractResult result = driver.extract(request);
            good = result.code == 0;
            if (!good && !cancelled_) {
                messages_.show(request.owner, result.message, kTitle, MessageIcon::Exclamation);
            }
        } else {
            // Nobody else lets messages run while such a library works, or shows how it gets on.
            ExtractionProgress shown(progress_, pump_, clock_, request);
            const Told told(driver,
                            [&](const ExtractProgress& progress) { return shown.step(progress) && !cancelled_; });
            static_cast<void>(driver.extract(request));
            good = true;
        }
    } catch (const std::exception&) {
        // Memory ran out: what was unpacked stays.
    }
    try {
        pump_.processPending();
    } catch (const std::exception&) {
        // The messages come a little later.
    }
    return good;
}

}  // namespace tovar
