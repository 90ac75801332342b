#include "archivers/formats/tar/filter_stream.h"

#include <cerrno>
#include <new>

namespace archiver::tar {

FilterStream::FilterStream(const InputFile& file, Compression compression)
    : input_(file), source_(input_), compression_(compression), handle_(::archive_read_new()) {
    if (!handle_) throw std::bad_alloc();
}

ReturnCode FilterStream::next(std::span<const char>& piece) noexcept {
    piece = {};
    if (error_ == kOk && !opened_) {
        opened_ = true;
        error_ = open();
    }
    while (error_ == kOk && !ended_ && piece.empty()) {
        const void* block = nullptr;
        std::size_t size = 0;
        la_int64_t offset = 0;
        const int result = ::archive_read_data_block(handle_.get(), &block, &size, &offset);
        if (result == ARCHIVE_EOF) {
            ended_ = true;
        } else if (result < ARCHIVE_WARN) {
            error_ = failure();
        } else {
            piece = {static_cast<const char*>(block), size};
        }
    }
    return error_;
}

ReturnCode FilterStream::open() noexcept {
    struct archive* const handle = handle_.get();
    ::archive_read_support_format_raw(handle);
    ::archive_read_support_format_empty(handle);
    // A filter that is set takes off one layer. That of compress reads from the file as soon as it is set, before there
    // is one, so that it must be found instead.
    const int filter = compression_ == Compression::kBzip2 ? ::archive_read_append_filter(handle, ARCHIVE_FILTER_BZIP2)
                                                           : ::archive_read_support_filter_compress(handle);
    if (filter < ARCHIVE_WARN) return kMethod;
    if (source_.open(handle) < ARCHIVE_WARN) return failure();
    // Data that cannot be unpacked from its first byte on passes for an empty file, but not without a word.
    if (::archive_error_string(handle) != nullptr) return failure();
    struct archive_entry* entry = nullptr;
    const int result = ::archive_read_next_header(handle, &entry);
    if (result < ARCHIVE_WARN) return failure();
    constexpr int kThisAndTheFile = 2;
    if (::archive_filter_count(handle) > kThisAndTheFile) return kNotSupport;
    ended_ = result == ARCHIVE_EOF;
    return kOk;
}

ReturnCode FilterStream::failure() const noexcept {
    if (source_.error() != kOk) return source_.error();
    if (::archive_errno(handle_.get()) == ENOMEM) return kEnoughMemory;
    return source_.ended() ? kCannotRead : kFileCrc;
}

}  // namespace archiver::tar
