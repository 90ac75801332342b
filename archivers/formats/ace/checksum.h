#pragma once
#include <zlib.h>

#include <cstdint>
#include <span>

namespace archiver::ace {

/// The checksum of no bytes at all.
inline constexpr std::uint32_t kEmptyChecksum = 0xFFFFFFFF;

/// Continues the format's checksum: CRC-32 (polynomial 0xEDB88320, reflected, start 0xFFFFFFFF) without the final
/// inversion, so the complement of the usual one. The low 16 bits guard headers.
inline std::uint32_t checksum(std::span<const char> bytes, std::uint32_t soFar = kEmptyChecksum) noexcept {
    return ~static_cast<std::uint32_t>(
        ::crc32(~soFar & 0xFFFFFFFF, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

}  // namespace archiver::ace
