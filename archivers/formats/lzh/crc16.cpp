#include "archivers/formats/lzh/crc16.h"

#include <array>
#include <cstddef>

namespace archiver::lzh {
namespace {

/// Bytes that one step takes.
constexpr std::size_t kStep = 8;
using Tables = std::array<std::array<std::uint16_t, 256>, kStep>;

/// Table n tells what a byte does to the sum when n zero bytes follow it.
constexpr Tables makeTables() {
    Tables tables{};
    for (unsigned value = 0; value < 256; ++value) {
        unsigned crc = value;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
        tables[0][value] = static_cast<std::uint16_t>(crc);
    }
    for (std::size_t zeros = 1; zeros < kStep; ++zeros) {
        for (std::size_t value = 0; value < 256; ++value) {
            const unsigned crc = tables[zeros - 1][value];
            tables[zeros][value] = static_cast<std::uint16_t>(crc >> 8 ^ tables[0][crc & 0xFF]);
        }
    }
    return tables;
}

constexpr Tables kTables = makeTables();

}  // namespace

std::uint16_t crc16Of(std::string_view bytes, std::uint16_t crc) noexcept {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    unsigned sum = crc;
    for (; left >= kStep; left -= kStep, at += kStep) {
        sum = static_cast<unsigned>(kTables[7][(sum & 0xFF) ^ at[0]] ^ kTables[6][sum >> 8 ^ at[1]] ^
                                    kTables[5][at[2]] ^ kTables[4][at[3]] ^ kTables[3][at[4]] ^ kTables[2][at[5]] ^
                                    kTables[1][at[6]] ^ kTables[0][at[7]]);
    }
    for (; left > 0; --left, ++at) sum = sum >> 8 ^ kTables[0][(sum ^ *at) & 0xFF];
    return static_cast<std::uint16_t>(sum);
}

}  // namespace archiver::lzh
