#pragma once
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace archiver::rar {

/// Continues the CRC-32 of a file's bytes.
inline std::uint32_t addToCrc(std::uint32_t crc, const char* bytes, std::size_t size) noexcept {
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    while (size > 0) {
        const std::size_t piece = std::min(size, kMostAtOnce);
        crc = static_cast<std::uint32_t>(::crc32(crc, reinterpret_cast<const Bytef*>(bytes), static_cast<uInt>(piece)));
        bytes += piece;
        size -= piece;
    }
    return crc;
}

}  // namespace archiver::rar
