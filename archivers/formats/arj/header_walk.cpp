#include "archivers/formats/arj/header_walk.h"

#include <algorithm>

#include "archivers/formats/arj/checksum.h"
#include "archivers/formats/little_endian.h"

namespace archiver::arj {
namespace {

using little_endian::load16;
using little_endian::load32;

constexpr std::size_t kPrefix = 4;  // id and size
constexpr std::size_t kCrc = 4;

}  // namespace

/// Gives a header's bytes between size and checksum.
/// @return kOk, kNoMoreEntries at an end, kHeaderBroken, kHeaderCrc, kCannotRead
ReturnCode HeaderWalk::basicAt(std::uint64_t offset, std::string_view& basic) {
    if (offset > view_.size()) return kHeaderBroken;
    const std::optional<std::string_view> prefix = view_.at(offset, kPrefix);
    if (!prefix) return kCannotRead;
    if (prefix->empty()) return kNoMoreEntries;
    if (prefix->size() < kPrefix || load16(prefix->data()) != kHeaderId) return kHeaderBroken;
    const std::size_t size = load16(prefix->data() + 2);
    if (size == 0) return kNoMoreEntries;
    if (size > kLargestHeader) return kHeaderBroken;

    static_assert(kPrefix + kLargestHeader + kCrc <= FileView::kCapacity);
    const std::optional<std::string_view> whole = view_.at(offset, kPrefix + size + kCrc);
    if (!whole) return kCannotRead;
    if (whole->size() < kPrefix + size + kCrc) return kHeaderBroken;
    basic = whole->substr(kPrefix, size);
    return crc32Of(0, basic.data(), size) == load32(basic.data() + size) ? kOk : kHeaderCrc;
}

/// Goes over extended headers, which tell nothing that unpacking needs.
/// @param offset  of the first one's size; behind the last one afterwards
ReturnCode HeaderWalk::skipExtended(std::uint64_t& offset) {
    while (true) {
        const std::optional<std::string_view> field = view_.at(offset, 2);
        if (!field) return kCannotRead;
        if (field->size() < 2) return kHeaderBroken;
        offset += 2;
        std::size_t left = load16(field->data());
        if (left == 0) return kOk;

        std::uint32_t crc = 0;
        while (left > 0) {
            const std::optional<std::string_view> piece = view_.at(offset, std::min(left, FileView::kCapacity));
            if (!piece) return kCannotRead;
            if (piece->empty()) return kHeaderBroken;
            crc = crc32Of(crc, piece->data(), piece->size());
            offset += piece->size();
            left -= piece->size();
        }
        const std::optional<std::string_view> stored = view_.at(offset, kCrc);
        if (!stored) return kCannotRead;
        if (stored->size() < kCrc) return kHeaderBroken;
        if (load32(stored->data()) != crc) return kHeaderCrc;
        offset += kCrc;
    }
}

/// Finds the main header: the id, a size, and a right checksum.
ReturnCode HeaderWalk::search() {
    constexpr char kFirst = static_cast<char>(kHeaderId & 0xFF);
    ReturnCode missing = kFileStyle;
    std::uint64_t offset = 0;
    while (offset <= kSearchLimit) {
        const std::optional<std::string_view> ahead = view_.from(offset, kPrefix);
        if (!ahead) return kCannotRead;
        if (ahead->size() < kPrefix) break;
        const std::size_t place = ahead->find(kFirst);
        if (place != 0) {
            offset += std::min(place, ahead->size());
            continue;
        }
        if (load16(ahead->data()) == kHeaderId) {
            std::string_view basic;
            const ReturnCode code = basicAt(offset, basic);
            if (code == kCannotRead) return code;
            if (code == kOk && parseMainHeader(basic, main_)) {
                start_ = offset;
                at_ = offset + kPrefix + basic.size() + kCrc;
                return kOk;
            }
            // A file that begins like an archive is a damaged one, unless another header is found.
            if (offset == 0 && (code == kHeaderCrc || code == kHeaderBroken)) missing = code;
        }
        ++offset;
    }
    return missing;
}

ReturnCode HeaderWalk::begin() {
    ReturnCode code = search();
    if (code == kOk) code = skipExtended(at_);
    first_ = at_;
    return code;
}

ReturnCode HeaderWalk::next(FileHeader& header) {
    std::string_view basic;
    ReturnCode code = basicAt(at_, basic);
    if (code != kOk) return code;
    if (!parseFileHeader(basic, header) || header.type == FileType::kMainHeader) return kHeaderBroken;
    std::uint64_t offset = at_ + kPrefix + basic.size() + kCrc;
    code = skipExtended(offset);
    if (code != kOk) return code;
    header.dataOffset = offset;
    at_ = offset + header.packedSize;
    return kOk;
}

}  // namespace archiver::arj
