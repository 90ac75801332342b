#pragma once
#include <cstdint>

/// Numbers as most archive formats store them: lowest byte first, at any address.
namespace archiver::little_endian {

inline std::uint16_t load16(const char* bytes) noexcept {
    const auto* b = reinterpret_cast<const unsigned char*>(bytes);
    return static_cast<std::uint16_t>(b[0] | b[1] << 8);
}

inline std::uint32_t load32(const char* bytes) noexcept {
    const auto* b = reinterpret_cast<const unsigned char*>(bytes);
    return b[0] | static_cast<std::uint32_t>(b[1]) << 8 | static_cast<std::uint32_t>(b[2]) << 16 |
           static_cast<std::uint32_t>(b[3]) << 24;
}

inline std::uint64_t load64(const char* bytes) noexcept {
    return load32(bytes) | static_cast<std::uint64_t>(load32(bytes + 4)) << 32;
}

inline void store16(char* bytes, std::uint16_t value) noexcept {
    bytes[0] = static_cast<char>(value & 0xFF);
    bytes[1] = static_cast<char>(value >> 8);
}

inline void store32(char* bytes, std::uint32_t value) noexcept {
    store16(bytes, static_cast<std::uint16_t>(value & 0xFFFF));
    store16(bytes + 2, static_cast<std::uint16_t>(value >> 16));
}

inline void store64(char* bytes, std::uint64_t value) noexcept {
    store32(bytes, static_cast<std::uint32_t>(value & 0xFFFFFFFF));
    store32(bytes + 4, static_cast<std::uint32_t>(value >> 32));
}

}  // namespace archiver::little_endian
