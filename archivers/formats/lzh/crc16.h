#pragma once
#include <cstdint>
#include <string_view>

namespace archiver::lzh {

/// CRC-16 of headers: reflected polynomial 0xA001, start 0, no change at the end.
std::uint16_t crc16Of(std::string_view bytes) noexcept;

}  // namespace archiver::lzh
