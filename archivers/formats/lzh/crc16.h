#pragma once
#include <cstdint>
#include <string_view>

namespace archiver::lzh {

/// CRC-16 of headers and members: reflected polynomial 0xA001, start 0, no change at the end.
/// @param crc  of the bytes before these; 0 for none
std::uint16_t crc16Of(std::string_view bytes, std::uint16_t crc = 0) noexcept;

}  // namespace archiver::lzh
