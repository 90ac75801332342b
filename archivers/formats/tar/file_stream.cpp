#include "archivers/formats/tar/file_stream.h"

#include <algorithm>

namespace archiver::tar {

ReturnCode FileStream::next(std::span<const char>& piece) noexcept {
    piece = {};
    const auto got = file_.readAt(position_, {buffer_.get(), kPiece});
    if (!got) return kCannotRead;
    piece = {buffer_.get(), *got};
    position_ += *got;
    return kOk;
}

// Never beyond the end: there the reader must notice that something is missing.
std::uint64_t FileStream::skip(std::uint64_t count) noexcept {
    const std::uint64_t left = position_ < file_.size() ? file_.size() - position_ : 0;
    const std::uint64_t skipped = std::min(count, left);
    position_ += skipped;
    return skipped;
}

}  // namespace archiver::tar
