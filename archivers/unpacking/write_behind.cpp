#include "archivers/unpacking/write_behind.h"

#include <algorithm>
#include <utility>

namespace archiver {

WriteBehindFile::WriteBehindFile(std::unique_ptr<OutputFile>& file) : writer_([this] { work(); }) {
    // The thread touches the file only when there is a block.
    file_ = std::move(file);
}

WriteBehindFile::~WriteBehindFile() { finish(true); }

ReturnCode WriteBehindFile::write(std::span<const char> bytes) {
    while (!bytes.empty()) {
        if (gathered_.capacity() < kBlock) gathered_.reserve(kBlock);
        const std::size_t taken = std::min(bytes.size(), kBlock - gathered_.size());
        gathered_.append(bytes.data(), taken);
        bytes = bytes.subspan(taken);
        if (gathered_.size() < kBlock) break;
        if (const ReturnCode code = handOver(); code != kOk) return code;
    }
    return kOk;
}

ReturnCode WriteBehindFile::commit(const ItemProperties& properties) {
    if (!gathered_.empty()) static_cast<void>(handOver());
    finish(false);
    return code_ == kOk ? file_->commit(properties) : code_;
}

ReturnCode WriteBehindFile::handOver() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return blocks_.size() < kWaitingBlocks || code_ != kOk; });
    if (code_ != kOk) return code_;
    blocks_.push_back(std::exchange(gathered_, std::exchange(spare_, {})));
    lock.unlock();
    changed_.notify_all();
    return kOk;
}

void WriteBehindFile::finish(bool giveUp) {
    if (!writer_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        if (giveUp && blocks_.size() > 1) blocks_.resize(1);
    }
    changed_.notify_all();
    writer_.join();
}

void WriteBehindFile::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || !blocks_.empty(); });
        if (blocks_.empty()) return;
        const std::string& block = blocks_.front();
        if (code_ == kOk) {
            lock.unlock();
            ReturnCode code = kCannotWrite;
            try {
                code = file_->write(block);
            } catch (...) {
                code = kEnoughMemory;  // nothing below throws for any other reason
            }
            lock.lock();
            if (code != kOk) code_ = code;
        }
        spare_ = std::move(blocks_.front());
        spare_.clear();
        blocks_.pop_front();
        changed_.notify_all();
    }
}

}  // namespace archiver
