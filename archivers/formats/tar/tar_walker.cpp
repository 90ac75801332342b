#include "archivers/formats/tar/tar_walker.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace archiver::tar {
namespace {

/// Where holes end to be believed: NTFS and ext4 hold no larger file as they are made by default, and a few bytes of a
/// header can claim zeros for days.
constexpr la_int64_t kLargestFile = la_int64_t{16} << 40;

/// Gives the sink zeros for a hole of a sparse file.
bool writeHole(std::uint64_t size, const DataSink& sink) {
    static constexpr char kZeros[16 * 1024] = {};
    while (size > 0) {
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(size, sizeof(kZeros)));
        if (!sink(kZeros, piece)) return false;
        size -= piece;
    }
    return true;
}

}  // namespace

TarWalker::TarWalker(std::unique_ptr<ByteStream> stream, const char* nameCharset)
    : stream_(std::move(stream)), source_(*stream_), handle_(::archive_read_new()) {
    if (!handle_) throw std::bad_alloc();
    ::archive_read_support_format_tar(handle_.get());
    ::archive_read_set_option(handle_.get(), "tar", "hdrcharset", nameCharset);
    if (source_.open(handle_.get()) < ARCHIVE_WARN) ended_ = failure(kHeaderBroken);
}

ReturnCode TarWalker::next() {
    entry_ = nullptr;
    if (ended_ != kOk) return ended_;
    const int result = ::archive_read_next_header(handle_.get(), &entry_);
    warned_ = result == ARCHIVE_WARN;
    if (result == ARCHIVE_OK || warned_) {
        ++count_;
        return kOk;
    }
    entry_ = nullptr;
    return ended_ = result == ARCHIVE_EOF ? kNoMoreEntries : failure(kHeaderBroken);
}

ReturnCode TarWalker::read(const DataSink& sink) {
    const la_int64_t size = ::archive_entry_size(entry_);
    la_int64_t position = 0;
    for (;;) {
        const void* block = nullptr;
        std::size_t bytes = 0;
        la_int64_t offset = 0;
        const int result = ::archive_read_data_block(handle_.get(), &block, &bytes, &offset);
        if (result < ARCHIVE_WARN) return failure(kCannotRead);
        const bool atEnd = result == ARCHIVE_EOF;
        const la_int64_t holeEnd = atEnd ? size : offset;
        if (holeEnd > position) {
            if (holeEnd > kLargestFile) return kCannotRead;
            if (!writeHole(static_cast<std::uint64_t>(holeEnd - position), sink)) return kUserCancel;
            position = holeEnd;
        }
        if (atEnd) return position == size ? kOk : kCannotRead;
        if (bytes > 0 && !sink(static_cast<const char*>(block), bytes)) return kUserCancel;
        position += static_cast<la_int64_t>(bytes);
    }
}

ReturnCode TarWalker::finish() {
    // What follows the last entry is a block of zeros, a few kilobytes of them; a file that goes on for long is not
    // read to the end for its checksum's sake.
    constexpr std::uint64_t kMostBytes = std::uint64_t{16} << 20;
    std::uint64_t total = 0;
    while (!source_.ended() && total < kMostBytes) {
        std::span<const char> piece;
        if (const ReturnCode code = stream_->next(piece); code != kOk) return code;
        if (piece.empty()) break;
        total += piece.size();
    }
    return kOk;
}

ReturnCode TarWalker::failure(ReturnCode otherwise) const noexcept {
    if (source_.error() != kOk) return source_.error();
    return ::archive_errno(handle_.get()) == ENOMEM ? kEnoughMemory : otherwise;
}

}  // namespace archiver::tar
