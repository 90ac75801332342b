#include "archivers/formats/rar/plain_stream.h"

#include <algorithm>
#include <new>
#include <utility>

#include "archivers/formats/rar/plain_headers.h"

namespace archiver::rar {

PlainStream::PlainStream(VolumeSet& volumes, bool solid, FileSource source)
    : volumes_(volumes),
      solid_(solid),
      source_(std::move(source)),
      buffer_(std::make_unique_for_overwrite<char[]>(kPiece)) {}

ReturnCode PlainStream::next(std::span<const char>& piece) noexcept {
    piece = {};
    if (error_ != kOk) return error_;
    try {
        error_ = nextPiece(piece);
    } catch (const std::bad_alloc&) {
        error_ = kEnoughMemory;
    }
    if (error_ != kOk) piece = {};
    return error_;
}

ReturnCode PlainStream::nextPiece(std::span<const char>& piece) {
    while (part_ < file_.parts.size()) {
        if (position_ < file_.parts[part_].size) return nextBytes(piece);
        ++part_;
        position_ = 0;
    }
    if (ended_) return kOk;
    const Generation generation = volumes_.generation();
    header_ = first_ ? plainStart(generation, solid_) : std::string();
    file_.parts.clear();
    part_ = 0;
    if (source_(file_)) {
        header_ += plainFile(generation, file_, solid_ && !first_);
    } else {
        ended_ = true;
        file_.parts.clear();
        header_ += plainEnd(generation);
    }
    first_ = false;
    piece = header_;
    return kOk;
}

ReturnCode PlainStream::nextBytes(std::span<const char>& piece) {
    const Part& part = file_.parts[part_];
    if (volume_.file == nullptr || volumeIndex_ != part.place.volume) {
        if (const ReturnCode code = volumes_.open(part.place.volume, volume_); code != kOk) return code;
        volumeIndex_ = part.place.volume;
    }
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(part.size - position_, kPiece));
    const auto got = volume_.file->readAt(part.place.offset + position_, {buffer_.get(), wanted});
    if (!got || *got == 0) return kCannotRead;
    position_ += *got;
    piece = {buffer_.get(), *got};
    return kOk;
}

/// What is left out is only ever the rest of a part.
std::uint64_t PlainStream::skip(std::uint64_t count) noexcept {
    if (error_ != kOk || part_ >= file_.parts.size() || volume_.file == nullptr) return 0;
    const Part& part = file_.parts[part_];
    if (volumeIndex_ != part.place.volume) return 0;
    const std::uint64_t begin = part.place.offset + position_;
    const std::uint64_t there = begin < volume_.file->size() ? volume_.file->size() - begin : 0;
    const std::uint64_t skipped = std::min({count, part.size - position_, there});
    position_ += skipped;
    return skipped;
}

}  // namespace archiver::rar
