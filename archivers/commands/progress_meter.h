#pragma once
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// Since any fixed point; never goes back.
using ProgressTime = std::chrono::milliseconds;
using ProgressClock = std::function<ProgressTime()>;

/// What the progress window shows beside the names. UTF-8.
struct ProgressPicture {
    std::string title;      ///< "37% - UnZip32"; without a percentage as long as there is no end to measure by
    unsigned perMille = 0;  ///< of the bar; 1000 only when all is done
    std::string amount;     ///< "12.3 MB of 45.6 MB"
    std::string rate;       ///< "5.67 MB/s"; empty until it can be told, and when nothing comes
    std::string remaining;  ///< "About 12 seconds remaining"; likewise

    bool operator==(const ProgressPicture&) const = default;
};

/// Measures the work of a command: by unpacked bytes where their total is known, else by the archive's own bytes.
class ProgressMeter {
public:
    /// @param title  of the window, without a percentage
    explicit ProgressMeter(std::string_view title) : title_(title) {}

    /// Takes how far the work is. Told some ten times a second; memory does not grow with time.
    void note(const UnpackProgress& progress, ProgressTime now);

    /// Time in which nobody worked, such as that of a question: it does not count as slowness.
    void passOver(ProgressTime idle);

    [[nodiscard]] ProgressPicture picture() const;

private:
    struct Sample {
        ProgressTime when;
        std::uint64_t bytes;  ///< unpacked
        std::uint64_t done;   ///< of what measures the work
    };
    [[nodiscard]] std::uint64_t perSecond(std::uint64_t Sample::*amount, ProgressTime least) const;

    std::string title_;
    std::deque<Sample> samples_;  ///< of the last seconds
    std::uint64_t total_ = 0;     ///< of Sample::done; 0 = not known
    bool byArchive_ = false;      ///< what Sample::done counts
};

/// When a progress window does what: messages every 10 ms, news ten times a second, and half a second of work before
/// it appears.
class ProgressSchedule {
public:
    /// What is due now; cheap when nothing is.
    struct Due {
        bool messages = false;
        bool news = false;
        bool appear = false;  ///< told again until `appeared`
    };
    Due at(ProgressTime now) noexcept;

    void appeared() noexcept { shown_ = true; }

    /// As ProgressMeter::passOver.
    void passOver(ProgressTime idle) noexcept;

private:
    bool begun_ = false;
    bool shown_ = false;
    ProgressTime start_{0};
    ProgressTime nextMessages_{0};
    ProgressTime nextNews_{0};
};

}  // namespace archiver
