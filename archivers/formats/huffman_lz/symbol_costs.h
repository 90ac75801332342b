#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "archivers/formats/huffman_lz/block_writer.h"

namespace archiver::huffman_lz {

/// What symbols cost by how often they occurred before, in parts of a bit.
class SymbolCosts {
public:
    static constexpr std::uint32_t kBit = 32;  ///< what a bit costs

    /// For bytes of which nothing else is known: as often as they occur among themselves, with some matches.
    explicit SymbolCosts(std::span<const unsigned char> bytes);

    /// Takes what occurred.
    void learn(const SymbolCounts& counts);

    /// @param code  of a byte or of a length
    [[nodiscard]] std::uint32_t ofCode(std::size_t code) const noexcept { return codes_[code]; }
    /// The code of a distance with the bits that follow it.
    /// @param distance  less 1
    [[nodiscard]] std::uint32_t ofDistance(std::uint32_t distance) const noexcept {
        return positions_[positionCodeOf(distance)];
    }

private:
    std::array<std::uint32_t, kLiterals> codes_;
    std::array<std::uint32_t, kMostPositions> positions_;
};

}  // namespace archiver::huffman_lz
