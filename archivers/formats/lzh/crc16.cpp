#include "archivers/formats/lzh/crc16.h"

#include <array>

namespace archiver::lzh {
namespace {

constexpr std::array<std::uint16_t, 256> makeTable() {
    std::array<std::uint16_t, 256> table{};
    for (unsigned value = 0; value < table.size(); ++value) {
        unsigned crc = value;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
        table[value] = static_cast<std::uint16_t>(crc);
    }
    return table;
}

}  // namespace

std::uint16_t crc16Of(std::string_view bytes) noexcept {
    static constexpr std::array<std::uint16_t, 256> kTable = makeTable();
    unsigned crc = 0;
    for (const char byte : bytes) crc = crc >> 8 ^ kTable[(crc ^ static_cast<unsigned char>(byte)) & 0xFF];
    return static_cast<std::uint16_t>(crc);
}

}  // namespace archiver::lzh
