#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace archiver::test {

/// A Huffman code.
struct Code {
    std::uint32_t bits = 0;
    unsigned width = 0;
};

/// Writes packed data: a row of 32-bit little-endian words, each filled from its most significant bit down.
class BitWriter {
public:
    /// Writes a number of up to 32 bits.
    BitWriter& put(std::uint32_t value, unsigned width);
    /// Writes bits as they are spelled: "110 01"; blanks are left out.
    BitWriter& put(std::string_view spelled);
    BitWriter& put(const Code& code) { return put(code.bits, code.width); }

    /// Writes a number in Golomb-Rice form.
    BitWriter& putGolombRice(std::uint32_t value, unsigned width);

    /// Writes a tree.
    /// @param widths      of the codes of symbols 0, 1 and so on, 0 for none; below 15, at least one symbol
    /// @param tableWidth  width of the widest code there can be
    /// @return the codes
    std::vector<Code> putTree(const std::vector<std::uint8_t>& widths, unsigned tableWidth = 11);

    /// What was written, filled up with zero bits to whole words.
    [[nodiscard]] std::string bytes() const;

private:
    std::vector<bool> bits_;
};

/// The widths of a tree in which the symbols named have codes of the same width, wide enough for all of them.
/// @param symbols  at least one
std::vector<std::uint8_t> flatTree(const std::vector<unsigned>& symbols);

/// An LZ77 stream with flat trees over the symbols that are used.
class Lz77Writer {
public:
    /// Writes a block's trees and its number of symbols; at most 32,767.
    Lz77Writer& block(BitWriter& bits, std::uint32_t count, const std::vector<unsigned>& mains,
                      const std::vector<unsigned>& lengths);

    Lz77Writer& literal(BitWriter& bits, char byte);
    Lz77Writer& literals(BitWriter& bits, std::string_view text);
    /// @param place   0 to 3
    /// @param length  the symbol, not the number of bytes
    Lz77Writer& fromHistory(BitWriter& bits, unsigned place, unsigned length);
    /// @param distance  one less than the bytes to go back
    Lz77Writer& match(BitWriter& bits, std::uint32_t distance, unsigned length);
    Lz77Writer& modeChange(BitWriter& bits);

private:
    std::vector<Code> main_, length_;
};

/// The main symbol that a distance takes.
unsigned distanceSymbol(std::uint32_t distance);

}  // namespace archiver::test
