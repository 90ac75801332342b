#include "archivers/formats/rar/new_decoder.h"

#include <archive_entry.h>

#include <cerrno>
#include <new>
#include <string_view>
#include <utility>

#include "archivers/formats/rar/checksum.h"

namespace archiver::rar {
namespace {

/// A BLAKE2 checksum is the library's to compare; it keeps the last bytes back when they do not fit it, and has no
/// number for that.
bool failedByChecksum(struct archive* handle) noexcept {
    const char* const text = ::archive_error_string(handle);
    return text != nullptr && std::string_view(text).starts_with("Checksum error");
}

}  // namespace

NewDecoder::NewDecoder(VolumeSet& volumes, bool solid, FileSource files)
    : stream_(volumes, solid, std::move(files)), source_(stream_), handle_(::archive_read_new()) {
    if (!handle_ || ::archive_read_support_format_rar5(handle_.get()) < ARCHIVE_WARN) throw std::bad_alloc();
    opened_ = source_.open(handle_.get()) >= ARCHIVE_WARN;
}

ReturnCode NewDecoder::next(const DataSink& progress) {
    if (!opened_) return failure();
    if (const ReturnCode code = skipRest(progress); code != kOk) return code;
    struct archive_entry* entry = nullptr;
    if (::archive_read_next_header(handle_.get(), &entry) < ARCHIVE_WARN || entry == nullptr) return failure();
    drained_ = false;
    ++count_;
    return kOk;
}

/// The library would do so as well, but tell nothing meanwhile.
ReturnCode NewDecoder::skipRest(const DataSink& progress) {
    while (!drained_) {
        const void* block = nullptr;
        std::size_t bytes = 0;
        la_int64_t offset = 0;
        const int result = ::archive_read_data_block(handle_.get(), &block, &bytes, &offset);
        if (result < ARCHIVE_WARN) return failure();
        drained_ = result == ARCHIVE_EOF;
        if (!progress("", 0)) return kUserCancel;
    }
    return kOk;
}

ReturnCode NewDecoder::read(const FileHeader& header, const DataSink& sink) {
    std::uint64_t total = 0;
    std::uint32_t crc = 0;
    int result = ARCHIVE_OK;
    for (;;) {
        const void* block = nullptr;
        std::size_t bytes = 0;
        la_int64_t offset = 0;
        result = ::archive_read_data_block(handle_.get(), &block, &bytes, &offset);
        if (result < ARCHIVE_WARN || result == ARCHIVE_EOF) break;
        if (bytes == 0) continue;
        if (bytes > header.originalSize - total) return kHuffmanCode;
        total += bytes;
        crc = addToCrc(crc, static_cast<const char*>(block), bytes);
        if (!sink(static_cast<const char*>(block), bytes)) return kUserCancel;
    }
    drained_ = result == ARCHIVE_EOF;
    const bool complete = total == header.originalSize;
    if (complete && header.hasCrc) return crc == header.crc ? kOk : kFileCrc;
    if (result < ARCHIVE_WARN) return source_.error() == kOk && failedByChecksum(handle_.get()) ? kFileCrc : failure();
    return complete ? kOk : failure();
}

ReturnCode NewDecoder::failure() const noexcept {
    if (source_.error() != kOk) return source_.error();
    return ::archive_errno(handle_.get()) == ENOMEM ? kEnoughMemory : kHuffmanCode;
}

}  // namespace archiver::rar
