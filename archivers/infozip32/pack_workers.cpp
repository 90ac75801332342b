#include "archivers/infozip32/pack_workers.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <optional>
#include <system_error>

#include "archivers/formats/zip/deflater.h"

namespace archiver::infozip {
namespace {

/// More gain little, and each holds some MiB.
constexpr unsigned kMostThreads = 8;
/// How long a caller goes without looking after its windows.
constexpr std::chrono::milliseconds kMoment{20};

/// The deflater's own level for one of ZIP's: one more in the middle, where its archives would else be up to 5 per cent
/// larger than those of others at the same level. It stays the faster one.
int effortOf(int level) noexcept { return level > 1 && level < 9 ? level + 1 : level; }

}  // namespace

/// What a thread uses again from job to job.
class PackWorkers::Tools {
public:
    std::span<char> room(std::size_t size) {
        if (size > capacity_) {
            buffer_.reset();
            capacity_ = 0;
            buffer_ = std::make_unique_for_overwrite<char[]>(size);
            capacity_ = size;
        }
        return {buffer_.get(), size};
    }
    zip::Deflater& deflater(int level) {
        if (!deflater_ || deflater_->level() != level) deflater_.emplace(level);
        return *deflater_;
    }

private:
    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_ = 0;
    std::optional<zip::Deflater> deflater_;
};

unsigned PackWorkers::count() noexcept { return std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads); }

PackWorkers::~PackWorkers() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        jobs_.clear();
    }
    given_.notify_all();
    for (std::thread& each : threads_) each.join();
}

void PackWorkers::add(std::shared_ptr<PackJob> job) {
    if (threads_.size() < count()) {
        try {
            threads_.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            if (threads_.empty()) {
                Tools tools;
                pack(*job, tools);
                return;
            }
        }
    }
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    given_.notify_one();
}

void PackWorkers::wait(const PackJob& job, const std::function<void()>& meanwhile) {
    std::unique_lock lock(mutex_);
    const auto isDone = [&job] { return job.state != PackJob::State::kWaiting; };
    while (!done_.wait_for(lock, kMoment, isDone)) {
        lock.unlock();
        meanwhile();
        lock.lock();
    }
}

void PackWorkers::work() {
    Tools tools;
    std::unique_lock lock(mutex_);
    for (;;) {
        given_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
        if (jobs_.empty()) return;
        const std::shared_ptr<PackJob> job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        PackJob result;  // the caller looks at the job's state only under the lock
        result.path = std::move(job->path);
        result.file = std::move(job->file);
        result.offset = job->offset;
        result.size = job->size;
        result.whole = job->whole;
        result.last = job->last;
        result.level = job->level;
        pack(result, tools);
        result.file.reset();
        lock.lock();
        *job = std::move(result);
        done_.notify_all();
    }
}

void PackWorkers::pack(PackJob& job, Tools& tools) const {
    try {
        if (!job.file) job.file = system_.open(job.path).file;
        if (!job.file) {
            job.state = PackJob::State::kNotOpened;
            return;
        }
        const std::span<char> room = tools.room(static_cast<std::size_t>(job.size));
        const std::optional<std::size_t> got = job.file->readAt(job.offset, room);
        if (!got) {
            job.state = PackJob::State::kNotRead;
            return;
        }
        const std::span<const char> plain = room.first(*got);
        job.taken = *got;
        job.crc = zip::crcOf(0, plain);
        std::span<const char> packed = plain;
        if (job.level > 0 && !(job.whole && plain.empty())) {
            packed = tools.deflater(effortOf(job.level)).pack(plain, job.last);
            job.deflated = true;
            if (job.whole && packed.size() >= plain.size()) {
                packed = plain;
                job.deflated = false;
            }
        }
        job.bytes.assign(packed.data(), packed.size());
        job.state = PackJob::State::kDone;
    } catch (const std::bad_alloc&) {
        job.bytes.clear();
        job.state = PackJob::State::kNoMemory;
    }
}

}  // namespace archiver::infozip
