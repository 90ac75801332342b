#include "archivers/formats/cab/block_line.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

namespace archiver::cab {

namespace {

constexpr unsigned kMostThreads = 64;
/// Blocks that wait for each thread: enough that none is idle while the caller reads a file or writes.
constexpr std::size_t kBlocksEach = 16;

}  // namespace

BlockLine::BlockLine(CabinetMethod method, unsigned threads) : method_(method) {
    if (threads == 0) threads = std::thread::hardware_concurrency();
    threads = std::min(threads, kMostThreads);
    // Stored blocks cost no more than handing them over does.
    if (threads <= 1 || method == CabinetMethod::kStored) return;
    try {
        for (unsigned i = 0; i < threads; ++i) workers_.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // It goes with those that there are.
    }
    most_ = std::max<std::size_t>(1, workers_.size() * kBlocksEach);
}

BlockLine::~BlockLine() {
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    todoChanged_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

void BlockLine::put(std::span<const char> content, bool firstOfFolder) {
    auto job = std::make_unique<Job>();
    job->content = std::make_shared<const std::vector<char>>(content.begin(), content.end());
    if (!firstOfFolder) job->before = std::move(last_);
    last_ = job->content;
    Job* const added = job.get();
    waiting_.push_back(std::move(job));
    if (workers_.empty()) return;
    {
        const std::lock_guard lock(mutex_);
        todo_.push_back(added);
    }
    todoChanged_.notify_one();
}

std::span<const char> BlockLine::take() {
    taken_ = std::move(waiting_.front());
    waiting_.pop_front();
    if (workers_.empty()) {
        pack(own_, *taken_);
    } else {
        std::unique_lock lock(mutex_);
        doneChanged_.wait(lock, [this] { return taken_->done; });
    }
    if (taken_->failed) throw std::bad_alloc();
    return taken_->block;
}

void BlockLine::work() {
    BlockPacker packer;
    std::unique_lock lock(mutex_);
    for (;;) {
        todoChanged_.wait(lock, [this] { return closing_ || !todo_.empty(); });
        if (closing_) return;
        Job* const job = todo_.front();
        todo_.pop_front();
        lock.unlock();
        pack(packer, *job);
        lock.lock();
        job->done = true;
        doneChanged_.notify_one();
    }
}

void BlockLine::pack(BlockPacker& packer, Job& job) const noexcept {
    try {
        const std::span<const char> before = job.before ? std::span<const char>(*job.before) : std::span<const char>();
        packer.pack(method_, *job.content, before, job.block);
    } catch (...) {
        job.failed = true;
    }
}

}  // namespace archiver::cab
