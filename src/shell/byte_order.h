#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace tovar {

// Numbers and texts in the blocks that programs of the desktop hand to each other: the low byte comes first.

inline void putNumber(std::string& block, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) block += static_cast<char>(number >> shift & 0xFF);
}

inline void putUnit(std::string& block, std::uint32_t unit) {
    block += static_cast<char>(unit & 0xFF);
    block += static_cast<char>(unit >> 8 & 0xFF);
}

/// Puts a text as UTF-16, without a NUL behind it.
inline void putWide(std::string& block, std::wstring_view text) {
    for (const wchar_t each : text) {
        const auto code = static_cast<std::uint32_t>(each);
        if (code > 0xFFFF) {
            putUnit(block, 0xD800 + (code - 0x10000) / 0x400);
            putUnit(block, 0xDC00 + (code - 0x10000) % 0x400);
        } else {
            putUnit(block, code);
        }
    }
}

}  // namespace tovar
