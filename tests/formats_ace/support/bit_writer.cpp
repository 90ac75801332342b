#include "formats_ace/support/bit_writer.h"

#include <algorithm>
#include <bit>
#include <numeric>

#include "archivers/formats/ace/code_table.h"

namespace archiver::test {
namespace {

/// The codes of a tree, in the order that the format's own sort gives to symbols of one width.
std::vector<Code> codesOf(std::vector<std::uint8_t> widths, unsigned tableWidth) {
    std::vector<std::uint16_t> symbols(widths.size());
    std::iota(symbols.begin(), symbols.end(), std::uint16_t{0});
    ace::sortByWidth(widths, symbols);
    std::size_t used = 0;
    while (used < widths.size() && widths[used] != 0) ++used;
    if (used < 2) {
        widths[0] = 1;
        used = 1;
    }
    std::vector<Code> codes(widths.size());
    std::uint32_t place = 0;
    while (used-- > 0) {
        const unsigned width = widths[used];
        if (width > tableWidth) continue;  // damaged on purpose
        codes[symbols[used]] = {place >> (tableWidth - width), width};
        place += 1U << (tableWidth - width);
    }
    return codes;
}

}  // namespace

BitWriter& BitWriter::put(std::uint32_t value, unsigned width) {
    while (width-- > 0) bits_.push_back((value >> width & 1) != 0);
    return *this;
}

BitWriter& BitWriter::put(std::string_view spelled) {
    for (const char bit : spelled) {
        if (bit != ' ') bits_.push_back(bit == '1');
    }
    return *this;
}

BitWriter& BitWriter::putGolombRice(std::uint32_t value, unsigned width) {
    put(value & ((1U << width) - 1), width);
    for (std::uint32_t rest = value >> width; rest > 0; --rest) put(1, 1);
    return put(0, 1);
}

std::vector<Code> BitWriter::putTree(const std::vector<std::uint8_t>& widths, unsigned tableWidth) {
    constexpr unsigned kUpper = 15, kPackedWidth = 4;
    put(static_cast<std::uint32_t>(widths.size() - 1), 9);
    put(0, 4);
    put(kUpper, 4);
    for (unsigned i = 0; i <= kUpper; ++i) put(kPackedWidth, 3);
    const std::vector<Code> packed = codesOf(std::vector<std::uint8_t>(kUpper + 1, kPackedWidth), 7);
    unsigned before = 0;
    for (const std::uint8_t width : widths) {
        put(packed[(width + kUpper - before) % kUpper]);
        before = width;
    }
    return codesOf(widths, tableWidth);
}

std::string BitWriter::bytes() const {
    std::string bytes((bits_.size() + 31) / 32 * 4, '\0');
    for (std::size_t i = 0; i < bits_.size(); ++i) {
        const std::size_t inWord = 31 - i % 32;
        if (bits_[i]) bytes[i / 32 * 4 + inWord / 8] |= static_cast<char>(1 << inWord % 8);
    }
    return bytes;
}

std::vector<std::uint8_t> flatTree(const std::vector<unsigned>& symbols) {
    const auto width = static_cast<std::uint8_t>(symbols.size() < 2 ? 1 : std::bit_width(symbols.size() - 1));
    std::vector<std::uint8_t> widths(*std::max_element(symbols.begin(), symbols.end()) + 1, 0);
    for (const unsigned symbol : symbols) widths[symbol] = width;
    return widths;
}

unsigned distanceSymbol(std::uint32_t distance) { return 260 + static_cast<unsigned>(std::bit_width(distance)); }

Lz77Writer& Lz77Writer::block(BitWriter& bits, std::uint32_t count, const std::vector<unsigned>& mains,
                              const std::vector<unsigned>& lengths) {
    main_ = bits.putTree(flatTree(mains));
    length_ = bits.putTree(flatTree(lengths));
    bits.put(count, 15);
    return *this;
}

Lz77Writer& Lz77Writer::literal(BitWriter& bits, char byte) {
    bits.put(main_.at(static_cast<unsigned char>(byte)));
    return *this;
}

Lz77Writer& Lz77Writer::literals(BitWriter& bits, std::string_view text) {
    for (const char byte : text) literal(bits, byte);
    return *this;
}

Lz77Writer& Lz77Writer::fromHistory(BitWriter& bits, unsigned place, unsigned length) {
    bits.put(main_.at(256 + place)).put(length_.at(length));
    return *this;
}

Lz77Writer& Lz77Writer::match(BitWriter& bits, std::uint32_t distance, unsigned length) {
    bits.put(main_.at(distanceSymbol(distance)));
    const auto width = static_cast<unsigned>(std::bit_width(distance));
    if (width >= 2) bits.put(distance & ((1U << (width - 1)) - 1), width - 1);
    bits.put(length_.at(length));
    return *this;
}

Lz77Writer& Lz77Writer::modeChange(BitWriter& bits) {
    bits.put(main_.at(283));
    return *this;
}

}  // namespace archiver::test
