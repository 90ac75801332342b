#include "archivers/formats/rar/packed_bytes.h"

#include <algorithm>
#include <utility>

namespace archiver::rar {

void PackedBytes::open(std::vector<Part> parts) {
    parts_ = std::move(parts);
    part_ = 0;
    position_ = 0;
}

ReturnCode PackedBytes::next(std::span<const char>& piece) {
    piece = {};
    while (part_ < parts_.size() && position_ >= parts_[part_].size) {
        ++part_;
        position_ = 0;
    }
    if (part_ >= parts_.size()) return kOk;
    const Part& part = parts_[part_];
    if (volume_.file == nullptr || volumeIndex_ != part.place.volume) {
        if (const ReturnCode code = volumes_.open(part.place.volume, volume_); code != kOk) return code;
        volumeIndex_ = part.place.volume;
    }
    if (buffer_ == nullptr) buffer_ = std::make_unique_for_overwrite<char[]>(kPiece);
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(part.size - position_, kPiece));
    const auto got = volume_.file->readAt(part.place.offset + position_, {buffer_.get(), wanted});
    if (!got || *got == 0) return kCannotRead;
    position_ += *got;
    volumes_.markRead(part.place.volume, part.place.offset + position_);
    piece = {buffer_.get(), *got};
    return kOk;
}

std::uint64_t PackedBytes::skip(std::uint64_t count) noexcept {
    if (part_ >= parts_.size() || volume_.file == nullptr) return 0;
    const Part& part = parts_[part_];
    if (volumeIndex_ != part.place.volume) return 0;
    const std::uint64_t begin = part.place.offset + position_;
    const std::uint64_t there = begin < volume_.file->size() ? volume_.file->size() - begin : 0;
    const std::uint64_t skipped = std::min({count, part.size - position_, there});
    position_ += skipped;
    return skipped;
}

}  // namespace archiver::rar
