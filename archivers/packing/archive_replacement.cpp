#include "archivers/packing/archive_replacement.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace archiver {
namespace {

/// Nobody can foresee it, so nobody can have put anything there; the words say what it is, should it ever stay behind.
std::filesystem::path unforeseeableName(std::random_device& chance) {
    char name[64];
    std::snprintf(name, sizeof name, "~packing-%08x%08x.tmp", chance(), chance());
    return name;
}

}  // namespace

ArchiveReplacement::ArchiveReplacement(PackingFiles& files, const std::filesystem::path& archive, std::size_t buffer)
    : files_(files), archive_(files.resolve(archive)), bufferSize_(std::max<std::size_t>(buffer, 1)) {}

ArchiveReplacement::~ArchiveReplacement() { discard(); }

ReturnCode ArchiveReplacement::begin() {
    if (const ReturnCode code = files_.checkReplaceable(archive_); code != kOk) return code;
    std::random_device chance;
    constexpr int kAttempts = 16;
    ReturnCode code = kSameNameFile;
    for (int attempt = 0; attempt < kAttempts && code == kSameNameFile; ++attempt) {
        temporary_ = archive_.parent_path() / unforeseeableName(chance);
        code = files_.create(temporary_, file_);
    }
    made_ = code == kOk;
    return made_ || code == kDiskSpace ? code : kTmpOpen;
}

ReturnCode ArchiveReplacement::write(std::span<const char> bytes) {
    while (!bytes.empty() && code_ == kOk) {
        if (buffer_.empty() && bytes.size() >= bufferSize_) {
            code_ = file_->write(written_, bytes);
            if (code_ == kOk) written_ += bytes.size();
            break;
        }
        const std::size_t taken = std::min(bytes.size(), bufferSize_ - buffer_.size());
        buffer_.append(bytes.data(), taken);
        bytes = bytes.subspan(taken);
        if (buffer_.size() == bufferSize_) static_cast<void>(writeOut());
    }
    return code_;
}

ReturnCode ArchiveReplacement::patch(std::uint64_t offset, std::span<const char> bytes) {
    if (code_ != kOk) return code_;
    if (offset < written_) {
        const auto before = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), written_ - offset));
        code_ = file_->write(offset, bytes.first(before));
        if (code_ != kOk) return code_;
        offset += before;
        bytes = bytes.subspan(before);
    }
    if (bytes.empty()) return kOk;
    const std::uint64_t at = offset - written_;
    if (at > buffer_.size() || bytes.size() > buffer_.size() - at) return kCannotWrite;
    std::ranges::copy(bytes, buffer_.begin() + static_cast<std::ptrdiff_t>(at));
    return kOk;
}

void ArchiveReplacement::rewind(std::uint64_t offset) noexcept {
    if (offset >= written_) {
        buffer_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(offset - written_, buffer_.size())));
        return;
    }
    longest_ = std::max(longest_, written_);
    buffer_.clear();
    written_ = offset;
}

ReturnCode ArchiveReplacement::writeOut() {
    if (code_ != kOk || buffer_.empty()) return code_;
    code_ = file_->write(written_, buffer_);
    if (code_ == kOk) written_ += buffer_.size();
    buffer_.clear();
    return code_;
}

ReturnCode ArchiveReplacement::finish() {
    if (!file_) return code_;
    if (writeOut() == kOk && longest_ > written_) code_ = file_->cut(written_);
    if (code_ == kOk) code_ = file_->flush();
    file_.reset();
    return code_;
}

ReturnCode ArchiveReplacement::commit() {
    if (!made_) return kCannotWrite;
    if (const ReturnCode code = finish(); code != kOk) return code;
    files_.keepAttributes(archive_, temporary_);
    const ReturnCode code = files_.rename(temporary_, archive_);
    if (code == kOk) made_ = false;
    return code;
}

ReturnCode ArchiveReplacement::commitRemoval() {
    discard();
    return files_.remove(archive_);
}

void ArchiveReplacement::discard() noexcept {
    file_.reset();
    if (!made_) return;
    made_ = false;
    static_cast<void>(files_.remove(temporary_));
}

}  // namespace archiver
