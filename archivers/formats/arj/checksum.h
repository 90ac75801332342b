#pragma once
#include <cstddef>
#include <cstdint>

namespace archiver::arj {

/// CRC-32 of headers and members: reflected polynomial 0xEDB88320, start and end inverted.
/// @param crc  of the bytes before these; 0 for none
std::uint32_t crc32Of(std::uint32_t crc, const void* bytes, std::size_t size) noexcept;

/// CRC-32 of two texts in a row, from those of each.
/// @param secondSize  bytes of the second text
std::uint32_t joinCrc32(std::uint32_t first, std::uint32_t second, std::uint32_t secondSize) noexcept;

}  // namespace archiver::arj
