#include "archivers/formats/rar/decoder.h"

#include <archive_entry.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>
#include <utility>

namespace archiver::rar {
namespace {

std::uint32_t addToCrc(std::uint32_t crc, const char* bytes, std::size_t size) noexcept {
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    while (size > 0) {
        const std::size_t piece = std::min(size, kMostAtOnce);
        crc = static_cast<std::uint32_t>(::crc32(crc, reinterpret_cast<const Bytef*>(bytes), static_cast<uInt>(piece)));
        bytes += piece;
        size -= piece;
    }
    return crc;
}

/// A BLAKE2 checksum is the library's to compare; it keeps the last bytes back when they do not fit it, and has no
/// number for that.
bool failedByChecksum(struct archive* handle) noexcept {
    const char* const text = ::archive_error_string(handle);
    return text != nullptr && std::string_view(text).starts_with("Checksum error");
}

}  // namespace

Decoder::Decoder(std::unique_ptr<tar::ByteStream> stream, Generation generation)
    : stream_(std::move(stream)), source_(*stream_), handle_(::archive_read_new()) {
    if (!handle_) throw std::bad_alloc();
    const int result = generation == Generation::kOld ? ::archive_read_support_format_rar(handle_.get())
                                                      : ::archive_read_support_format_rar5(handle_.get());
    if (result < ARCHIVE_WARN) throw std::bad_alloc();
    opened_ = source_.open(handle_.get()) >= ARCHIVE_WARN;
}

ReturnCode Decoder::next() {
    if (!opened_) return failure();
    struct archive_entry* entry = nullptr;
    if (::archive_read_next_header(handle_.get(), &entry) < ARCHIVE_WARN || entry == nullptr) return failure();
    ++count_;
    return kOk;
}

ReturnCode Decoder::read(const FileHeader& header, const DataSink& sink) {
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
    const bool complete = total == header.originalSize;
    if (complete && header.hasCrc) return crc == header.crc ? kOk : kFileCrc;
    if (result < ARCHIVE_WARN) return source_.error() == kOk && failedByChecksum(handle_.get()) ? kFileCrc : failure();
    return complete ? kOk : failure();
}

ReturnCode Decoder::failure() const noexcept {
    if (source_.error() != kOk) return source_.error();
    return ::archive_errno(handle_.get()) == ENOMEM ? kEnoughMemory : kHuffmanCode;
}

}  // namespace archiver::rar
