#include "archivers/unpacking/job_line.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace archiver {
namespace {

constexpr unsigned kMostThreads = 16;
constexpr std::size_t kMostJobs = 1024;  // four batches for each of the most threads
constexpr std::size_t kBatchJobs = 16;
constexpr std::uint64_t kBatchCost = std::uint64_t{256} << 10;
constexpr std::uint64_t kMostCost = std::uint64_t{128} << 20;

unsigned threadCount(unsigned wanted) {
    if (wanted == 0) wanted = std::thread::hardware_concurrency();
    return std::clamp(wanted, 1U, kMostThreads);
}

}  // namespace

JobLine::JobLine(JobSurroundings& around, unsigned threads) : around_(around), threads_(threadCount(threads)) {}

JobLine::~JobLine() {
    around_.stop.store(true);
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    todo_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

bool JobLine::isFull() const noexcept { return jobs_.size() >= kMostJobs || cost_ >= kMostCost; }

bool JobLine::isHalfFull() const noexcept { return jobs_.size() >= kMostJobs / 2 || cost_ >= kMostCost / 2; }

void JobLine::add(std::unique_ptr<MemberJob> job) {
    MemberJob& added = *job;
    jobs_.push_back(std::move(job));
    cost_ += added.cost;
    if (!added.data) {
        added.done.store(true, std::memory_order_relaxed);
        return;
    }
    gathered_.push_back(&added);
    gatheredCost_ += added.cost;
    if (gathered_.size() >= kBatchJobs || gatheredCost_ >= kBatchCost) handOver();
}

std::unique_ptr<MemberJob> JobLine::takeFront() {
    std::unique_ptr<MemberJob> job = std::move(jobs_.front());
    jobs_.pop_front();
    cost_ -= job->cost;
    return job;
}

bool JobLine::waitFor(const MemberJob& job, std::chrono::milliseconds longest) {
    const auto done = [&job] { return job.done.load(std::memory_order_acquire); };
    if (done()) return true;
    if (!gathered_.empty()) handOver();
    std::unique_lock lock(mutex_);
    return finished_.wait_for(lock, longest, done);
}

void JobLine::handOver() {
    Batch batch;
    batch.swap(gathered_);
    gatheredCost_ = 0;
    if (workers_.size() < threads_) {
        try {
            workers_.reserve(threads_);
            workers_.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            threads_ = std::max<unsigned>(1, static_cast<unsigned>(workers_.size()));  // as many as the system gives
        }
    }
    if (workers_.empty()) {
        for (MemberJob* const job : batch) perform(*job);
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        batches_.push_back(std::move(batch));
    }
    todo_.notify_one();
}

void JobLine::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        todo_.wait(lock, [this] { return closing_ || !batches_.empty(); });
        if (batches_.empty()) return;
        Batch batch = std::move(batches_.front());
        batches_.pop_front();
        lock.unlock();
        for (MemberJob* const job : batch) perform(*job);
        lock.lock();
        finished_.notify_one();
    }
}

void JobLine::perform(MemberJob& job) {
    if (around_.stop.load(std::memory_order_relaxed)) {
        job.code = kUserCancel;
    } else {
        job.code = performJob(job, around_, [&job](const DataSink& sink) { return job.data->read(sink); }, {});
    }
    job.data.reset();
    job.done.store(true, std::memory_order_release);
}

}  // namespace archiver
