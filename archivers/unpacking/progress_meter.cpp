#include "archivers/unpacking/progress_meter.h"

#include <utility>

namespace archiver {

void ProgressMeter::tell() {
    const MemberJob* const job = shown_ != nullptr ? shown_ : last_.get();
    UnpackProgress progress;
    if (job != nullptr) {
        progress.member = &job->member;
        progress.file = job->file;
        progress.memberBytes = job->bytes.load(std::memory_order_relaxed);
    }
    progress.bytes = around_.bytes.load(std::memory_order_relaxed);
    progress.totalBytes = total_;
    progress.archiveBytes = reader_.consumed();
    progress.archiveSize = reader_.facts().fileSize;
    progress.members = members_;
    if (!events_.progress(progress)) cancel();
    next_ = Clock::now() + kInterval;
}

void ProgressMeter::finished(std::unique_ptr<MemberJob> job) {
    ++members_;
    shown_ = nullptr;
    last_ = std::move(job);
    tell();
}

}  // namespace archiver
