#pragma once
#include <array>
#include <bit>
#include <cstdint>
#include <span>

#include "archivers/formats/huffman_lz/block_shape.h"
#include "archivers/formats/huffman_lz/packed_bits.h"

namespace archiver::huffman_lz {

/// A literal, or a match with its distance.
struct Symbol {
    std::uint16_t code;      ///< 0 to 255 a byte; from kFirstMatch on a match
    std::uint16_t distance;  ///< of a match, less 1
};

/// The code of a distance, less 1: how many bits it has.
inline unsigned positionCodeOf(std::uint32_t distance) noexcept {
    return static_cast<unsigned>(std::bit_width(distance));
}

/// How often symbols occur in a run of them.
struct SymbolCounts {
    std::array<std::uint32_t, kLiterals> literals{};
    std::array<std::uint32_t, kMostPositions> positions{};
    std::uint32_t symbols = 0;

    void add(const Symbol& symbol) noexcept {
        ++symbols;
        ++literals[symbol.code];
        if (symbol.code >= kFirstMatch) ++positions[positionCodeOf(symbol.distance)];
    }
    void add(const SymbolCounts& other) noexcept;
};

/// The codes of one block.
class BlockCodes {
public:
    BlockCodes(const SymbolCounts& counts, const BlockShape& shape);

    /// Bits of the whole block, tables included.
    [[nodiscard]] std::uint64_t size() const;

    /// Writes the block.
    /// @param symbols  those that were counted; at most kMostSymbols
    void write(std::span<const Symbol> symbols, PackedBits& bits) const;

private:
    template <class Put>
    void putTables(Put put) const;
    template <class Put>
    void putSmallTable(std::span<const std::uint8_t> lengths, std::size_t only, unsigned width, std::size_t gapAfter,
                       Put put) const;
    template <class Put>
    void putLiteralTable(Put put) const;

    const SymbolCounts& counts_;
    BlockShape shape_;
    std::array<std::uint8_t, kLiterals> literals_;
    std::array<std::uint8_t, kMostPositions> positions_;
    std::array<std::uint8_t, kLengthCodes> lengthCodes_;
    std::size_t onlyLengthCode_ = 0;  ///< where the lengths of the literals are all of one kind
};

}  // namespace archiver::huffman_lz
