#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "archivers/formats/ace/bit_reader.h"

namespace archiver::ace {

/// A place of a code table: the symbol and its code's width in bits.
class CodeEntry {
public:
    constexpr CodeEntry() noexcept : packed_(kNoSymbol << 4) {}
    constexpr CodeEntry(unsigned symbol, unsigned width) noexcept
        : packed_(static_cast<std::uint16_t>(symbol << 4 | width)) {}
    [[nodiscard]] constexpr unsigned symbol() const noexcept { return packed_ >> 4; }
    [[nodiscard]] constexpr unsigned width() const noexcept { return packed_ & 15; }

    /// The symbol of bits that are no code.
    static constexpr std::uint16_t kNoSymbol = 0xFFF;

private:
    std::uint16_t packed_;
};

/// Reads the code widths of a Huffman tree and makes its codes.
/// @param table    2^width places, one for each value of the next `width` bits; 1 to 11 bits
/// @param symbols  how many symbols the tree has, at most 289; the data may name one more
/// @return false when the data is damaged: a code too wide, or more codes than there is room for
bool readCodeTable(BitReader& reader, std::span<CodeEntry> table, unsigned symbols);

/// Sorts widths down, and the symbols with them. The order of equal widths is that of one particular quicksort, and
/// codes depend on it.
void sortByWidth(std::span<std::uint8_t> widths, std::span<std::uint16_t> symbols);

/// A Huffman tree as a table over the next bits.
/// @tparam kWidth    bits of the widest code
/// @tparam kSymbols  number of symbols
template <unsigned kWidth, unsigned kSymbols>
class CodeTable {
public:
    bool read(BitReader& reader) { return readCodeTable(reader, table_, kSymbols); }

    /// @param window  with at least kWidth bits
    unsigned take(BitWindow& window) const noexcept {
        const CodeEntry entry = table_[window.peek(kWidth)];
        window.skip(entry.width());
        return entry.symbol();
    }
    unsigned take(BitReader& reader) const {
        const CodeEntry entry = table_[reader.peek32() >> (32 - kWidth)];
        reader.skip(entry.width());
        return entry.symbol();
    }

private:
    std::array<CodeEntry, std::size_t{1} << kWidth> table_{};
};

}  // namespace archiver::ace
