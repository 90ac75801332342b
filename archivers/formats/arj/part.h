#pragma once
#include <cstddef>
#include <cstdint>

#include "archivers/formats/arj/header_fields.h"

namespace archiver::arj {

/// The packed data of a member in one volume.
struct Part {
    std::size_t volume = 0;
    std::uint64_t offset = 0;  ///< in the volume
    std::uint32_t packedSize = 0;
    std::uint32_t originalSize = 0;
    std::uint32_t crc = 0;  ///< of this part's original bytes
    std::uint8_t method = 0;
    std::uint8_t modifier = 0;  ///< of the password
    bool garbled = false;
};

inline Part partOf(const FileHeader& header, std::size_t volume) noexcept {
    return {.volume = volume,
            .offset = header.dataOffset,
            .packedSize = header.packedSize,
            .originalSize = header.originalSize,
            .crc = header.crc,
            .method = header.method,
            .modifier = header.modifier,
            .garbled = header.has(flag::kGarbled)};
}

}  // namespace archiver::arj
