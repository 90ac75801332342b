#pragma once
#include <chrono>
#include <cstdint>
#include <memory>

#include "archivers/unpacking/member_job.h"

namespace archiver {

/// Tells how far a run is, often enough for a window that stays alive, seldom enough to cost nothing.
class ProgressMeter {
public:
    ProgressMeter(const ArchiveReader& reader, JobSurroundings& around, UnpackEvents& events)
        : reader_(reader), around_(around), events_(events), next_(Clock::now()) {}

    /// Tells when it is time to. @return false once the run is cancelled or has ended for another reason
    bool poll() {
        if (Clock::now() >= next_) tell();
        return !around_.stop.load(std::memory_order_relaxed);
    }
    /// Tells in any case.
    void tell();
    void cancel() noexcept { around_.stop.store(true); }

    /// The job that is worked on. It may go away only when another is shown, or it was handed to `finished`.
    void show(const MemberJob* job) noexcept { shown_ = job; }
    /// Tells that a job is finished and keeps it, as the one that was worked on last.
    void finished(std::unique_ptr<MemberJob> job);
    void setTotal(std::uint64_t bytes) noexcept { total_ = bytes; }

    /// How long to wait for anything between two looks at the clock.
    static constexpr std::chrono::milliseconds kInterval{20};

private:
    using Clock = std::chrono::steady_clock;
    const ArchiveReader& reader_;
    JobSurroundings& around_;
    UnpackEvents& events_;
    Clock::time_point next_;
    const MemberJob* shown_ = nullptr;
    std::unique_ptr<MemberJob> last_;
    std::uint64_t total_ = 0;
    std::uint64_t members_ = 0;
};

}  // namespace archiver
