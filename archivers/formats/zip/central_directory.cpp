#include "archivers/formats/zip/central_directory.h"

#include <algorithm>
#include <cstring>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {
namespace {

using little_endian::load16;
using little_endian::load32;

/// Holds the largest header there can be: 46 bytes and three fields of 65535.
constexpr std::size_t kBufferSize = std::size_t{256} * 1024;
static_assert(kBufferSize >= kCentralSize + std::size_t{3} * 0xFFFF);

}  // namespace

CentralDirectory::CentralDirectory(const InputFile& file, const DirectoryPlace& place)
    : file_(file),
      place_(place),
      buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)),
      readOffset_(place.start) {}

void CentralDirectory::restart() noexcept {
    begin_ = end_ = 0;
    readOffset_ = place_.start;
    readFailed_ = false;
}

bool CentralDirectory::require(std::size_t bytes) noexcept {
    if (end_ - begin_ >= bytes) return true;
    if (readFailed_) return false;
    std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(kBufferSize - end_, place_.limit - readOffset_));
    const auto got = file_.readAt(readOffset_, {buffer_.get() + end_, wanted});
    readFailed_ = got != wanted;  // an error, or the file became shorter since it was opened
    end_ += got.value_or(0);
    readOffset_ += got.value_or(0);
    return end_ >= bytes;
}

ReturnCode CentralDirectory::next(CentralHeader& header) {
    const std::uint64_t position = readOffset_ - (end_ - begin_);
    if (position >= place_.limit) return kNoMoreEntries;
    const auto notAHeader = [&] {
        if (readFailed_) return kCannotRead;
        return position >= place_.claimedEnd ? kNoMoreEntries : kHeaderBroken;
    };
    if (!require(kCentralSize) || load32(buffer_.get() + begin_) != kCentralSignature) return notAHeader();

    const char* fixed = buffer_.get() + begin_;
    const std::size_t nameSize = load16(fixed + 28);
    const std::size_t extraSize = load16(fixed + 30);
    const std::size_t size = kCentralSize + nameSize + extraSize + load16(fixed + 32);
    if (!require(size)) return readFailed_ ? kCannotRead : kHeaderBroken;

    fixed = buffer_.get() + begin_;  // the bytes may have moved
    header.madeBy = load16(fixed + 4);
    header.flags = load16(fixed + 8);
    header.method = load16(fixed + 10);
    header.dosTime = load16(fixed + 12);
    header.dosDate = load16(fixed + 14);
    header.crc = load32(fixed + 16);
    header.packedSize = load32(fixed + 20);
    header.originalSize = load32(fixed + 24);
    header.externalAttributes = load32(fixed + 38);
    header.localOffset = load32(fixed + 42);
    header.name = {fixed + kCentralSize, nameSize};
    header.extra = {fixed + kCentralSize + nameSize, extraSize};
    begin_ += size;
    return kOk;
}

}  // namespace archiver::zip
