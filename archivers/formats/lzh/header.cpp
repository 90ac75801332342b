#include "archivers/formats/lzh/header.h"

#include <algorithm>
#include <limits>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/lzh/extended_headers.h"

namespace archiver::lzh {
namespace {

using little_endian::load16;
using little_endian::load32;

/// More than any archiver writes into one header; level 3 could claim gigabytes.
constexpr std::size_t kLargestHeader = 1 << 20;
constexpr char kPadding = 0x1A;  ///< fills the last record of a file of CP/M
constexpr std::size_t kRecord = 128;

std::uint8_t byteAt(std::string_view bytes, std::size_t at) noexcept { return static_cast<std::uint8_t>(bytes[at]); }

class HeaderParser {
public:
    HeaderParser(const InputFile& file, std::uint64_t offset, Header& header) noexcept
        : file_(file), offset_(offset), header_(header) {}

    ReturnCode parse();

private:
    ReturnCode grow(std::size_t size);
    void readCommonFields();
    ReturnCode parseOld();
    ReturnCode growByExtendedHeaders();
    void readOldArea(std::string_view area);
    ReturnCode parseLevel2();
    ReturnCode parseLevel3();

    const InputFile& file_;
    std::uint64_t offset_;
    Header& header_;
    std::string bytes_;  ///< the header as far as it is read
};

/// Reads on until there are that many bytes.
ReturnCode HeaderParser::grow(std::size_t size) {
    if (size > kLargestHeader) return kHeaderBroken;
    const std::size_t had = bytes_.size();
    if (size <= had) return kOk;
    bytes_.resize(size);
    const auto got = file_.readAt(offset_ + had, std::span<char>(bytes_.data() + had, size - had));
    bytes_.resize(had + got.value_or(0));
    if (!got) return kCannotRead;
    return bytes_.size() == size ? kOk : kHeaderBroken;
}

ReturnCode HeaderParser::parse() {
    ReturnCode code = grow(kLeastHeader);
    if (code == kCannotRead) return code;
    if (bytes_.empty() || bytes_[0] == '\0') return kNoMoreEntries;
    const bool padded = std::all_of(bytes_.begin(), bytes_.end(), [](char each) { return each == kPadding; });
    if (padded && file_.size() - offset_ < kRecord) return kNoMoreEntries;
    if (code != kOk || !looksLikeHeader(bytes_)) return kHeaderBroken;

    header_ = {};
    readCommonFields();
    switch (header_.level) {
        case 0:
        case 1:
            code = parseOld();
            break;
        case 2:
            code = parseLevel2();
            break;
        default:
            code = parseLevel3();
            break;
    }
    if (code != kOk) return code;
    header_.dataOffset = offset_ + bytes_.size();
    if (header_.packedSize > std::numeric_limits<std::uint64_t>::max() - header_.dataOffset) return kHeaderBroken;
    // UNIX archivers wrote folders of level 0 without their names.
    return header_.hasName() || header_.isFolderOrLink() ? kOk : kHeaderBroken;
}

void HeaderParser::readCommonFields() {
    header_.level = byteAt(bytes_, 20);
    header_.method = bytes_.substr(2, 5);
    header_.packedSize = load32(bytes_.data() + 7);
    header_.originalSize = load32(bytes_.data() + 11);
    header_.time = load32(bytes_.data() + 15);
    header_.attributes = byteAt(bytes_, 19);
}

/// Levels 0 and 1.
ReturnCode HeaderParser::parseOld() {
    const std::size_t size = byteAt(bytes_, 0);
    const std::size_t nameSize = byteAt(bytes_, 21);
    const std::size_t least = header_.level == 0 ? 20 : 25;
    if (size < least + nameSize) return kHeaderBroken;
    if (const ReturnCode code = grow(size + 2); code != kOk) return code;
    unsigned sum = 0;
    for (std::size_t at = 2; at < size + 2; ++at) sum += byteAt(bytes_, at);
    if ((sum & 0xFF) != byteAt(bytes_, 1)) return kHeaderCrc;

    header_.name = bytes_.substr(22, nameSize);
    std::replace(header_.name.begin(), header_.name.end(), '\xFF', '/');
    if (size >= 22 + nameSize) header_.crc = load16(bytes_.data() + 22 + nameSize);
    if (header_.level == 0) {
        if (size > 22 + nameSize) readOldArea(std::string_view(bytes_).substr(24 + nameSize));
        return kOk;
    }
    header_.system = byteAt(bytes_, 24 + nameSize);
    if (const ReturnCode code = growByExtendedHeaders(); code != kOk) return code;
    return readExtendedHeaders(bytes_, size, 2, header_);
}

/// Level 1 counts its extended headers as packed bytes.
ReturnCode HeaderParser::growByExtendedHeaders() {
    for (;;) {
        const std::size_t next = load16(bytes_.data() + bytes_.size() - 2);
        if (next == 0) return kOk;
        if (next < 3 || next > header_.packedSize) return kHeaderBroken;
        header_.packedSize -= next;
        if (const ReturnCode code = grow(bytes_.size() + next); code != kOk) return code;
    }
}

/// What UNIX archivers put behind a header of level 0; those of OS-9 hold the time twice, so the mode counts from the
/// end.
void HeaderParser::readOldArea(std::string_view area) {
    constexpr std::size_t kUnixArea = 12;
    // Those of PMarc hold a comment.
    if (header_.method.compare(0, 3, "-pm") == 0) return;
    if ((area[0] != 'U' && area[0] != 'K') || area.size() < kUnixArea) return;
    header_.system = byteAt(area, 0);
    header_.unixTime = load32(area.data() + 2);
    if (area[0] == 'U') header_.unixMode = load16(area.data() + area.size() - 6);
}

ReturnCode HeaderParser::parseLevel2() {
    constexpr std::size_t kLeast = 26;
    std::size_t size = load16(bytes_.data());
    if (size < kLeast) return kHeaderBroken;
    if (const ReturnCode code = grow(size); code != kOk) return code;
    header_.crc = load16(bytes_.data() + 21);
    header_.system = byteAt(bytes_, 23);
    // The archiver of OS-9/68k does not count the size field itself.
    if (header_.system == 'K') {
        if (const ReturnCode code = grow(size + 2); code != kOk) return code;
    }
    header_.attributes = attribute::kArchive;
    return readExtendedHeaders(bytes_, 24, 2, header_);
}

ReturnCode HeaderParser::parseLevel3() {
    constexpr std::size_t kLeast = 32;
    if (load16(bytes_.data()) != 4) return kHeaderBroken;
    if (const ReturnCode code = grow(kLeast); code != kOk) return code;
    const std::size_t size = load32(bytes_.data() + 24);
    if (size < kLeast) return kHeaderBroken;
    if (const ReturnCode code = grow(size); code != kOk) return code;
    header_.crc = load16(bytes_.data() + 21);
    header_.system = byteAt(bytes_, 23);
    header_.attributes = attribute::kArchive;
    return readExtendedHeaders(bytes_, 28, 4, header_);
}

}  // namespace

bool looksLikeHeader(std::string_view bytes) noexcept {
    constexpr std::uint8_t kLastLevel = 3;
    if (bytes.size() < kLeastHeader || bytes[2] != '-' || bytes[6] != '-') return false;
    const bool isMethod = bytes[3] == 'l' || (bytes[3] == 'p' && bytes[4] == 'm');
    // "-pms-" stands in the program of a self-extracting archive.
    const bool isProgram = bytes[3] == 'p' && bytes[5] == 's';
    const bool isText = bytes[4] > ' ' && bytes[4] < 0x7F && bytes[5] > ' ' && bytes[5] < 0x7F;
    return isMethod && isText && !isProgram && byteAt(bytes, 20) <= kLastLevel;
}

ReturnCode readHeader(const InputFile& file, std::uint64_t offset, Header& header) {
    return HeaderParser(file, offset, header).parse();
}

}  // namespace archiver::lzh
