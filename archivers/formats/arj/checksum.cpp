#include "archivers/formats/arj/checksum.h"

#include <zlib.h>

#include <algorithm>

namespace archiver::arj {

std::uint32_t crc32Of(std::uint32_t crc, const void* bytes, std::size_t size) noexcept {
    constexpr std::size_t kLargestPiece = 1 << 30;
    const auto* at = static_cast<const Bytef*>(bytes);
    uLong sum = crc;
    while (size > 0) {
        const std::size_t piece = std::min(size, kLargestPiece);
        sum = ::crc32(sum, at, static_cast<uInt>(piece));
        at += piece;
        size -= piece;
    }
    return static_cast<std::uint32_t>(sum);
}

std::uint32_t joinCrc32(std::uint32_t first, std::uint32_t second, std::uint32_t secondSize) noexcept {
    // A long holds 31 bits of a size on some systems: the second text in two halves of zeros does not.
    const auto half = static_cast<z_off_t>(secondSize / 2);
    const uLong moved = ::crc32_combine(first, 0, half);
    return static_cast<std::uint32_t>(
        ::crc32_combine(moved, second, static_cast<z_off_t>(secondSize - secondSize / 2)));
}

}  // namespace archiver::arj
