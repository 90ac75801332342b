#pragma once
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "archivers/unpacking/member_job.h"

namespace archiver {

/// The jobs of a run in the order of their members, with the threads that work on them. All functions are for the one
/// thread that owns the line; it takes the jobs out at the front, once they are done.
///
/// Small jobs travel in batches, so that handing over costs little beside them. Jobs in the line are bounded in number
/// and by the memory that they may take, so that no archive can fill a 32-bit process.
class JobLine {
public:
    /// @param threads  that unpack; 1: none of them, all jobs come done
    JobLine(JobSurroundings& around, unsigned threads);
    /// Stops what is not done, and waits for the threads.
    ~JobLine();
    JobLine(const JobLine&) = delete;
    JobLine& operator=(const JobLine&) = delete;

    [[nodiscard]] bool isParallel() const noexcept { return threads_ > 1; }
    [[nodiscard]] bool empty() const noexcept { return jobs_.empty(); }
    /// Whether the front is to be awaited before more is added.
    [[nodiscard]] bool isFull() const noexcept;
    /// Whether half of that is in the line.
    [[nodiscard]] bool isHalfFull() const noexcept;
    /// A job with data goes to a thread, one without is done.
    void add(std::unique_ptr<MemberJob> job);
    /// The first job, done or not; null when there is none.
    [[nodiscard]] MemberJob* front() noexcept { return jobs_.empty() ? nullptr : jobs_.front().get(); }
    std::unique_ptr<MemberJob> takeFront();
    /// All jobs, for one who has found them all done.
    [[nodiscard]] const std::deque<std::unique_ptr<MemberJob>>& jobs() const noexcept { return jobs_; }
    /// Hands over what is gathered, and waits until that job is done.
    /// @return whether it is
    bool waitFor(const MemberJob& job, std::chrono::milliseconds longest);

private:
    using Batch = std::vector<MemberJob*>;
    void handOver();
    void work();
    void perform(MemberJob& job);

    JobSurroundings& around_;
    unsigned threads_;
    std::deque<std::unique_ptr<MemberJob>> jobs_;
    Batch gathered_;
    std::uint64_t gatheredCost_ = 0;
    std::uint64_t cost_ = 0;  ///< of all jobs in the line

    std::mutex mutex_;
    std::condition_variable todo_, finished_;
    std::deque<Batch> batches_;
    bool closing_ = false;
    std::vector<std::thread> workers_;
};

}  // namespace archiver
