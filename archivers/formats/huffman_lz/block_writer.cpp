#include "archivers/formats/huffman_lz/block_writer.h"

#include <algorithm>

#include "archivers/formats/huffman_lz/code_lengths.h"

namespace archiver::huffman_lz {
namespace {

constexpr unsigned kCountBits = 16;
constexpr unsigned kLengthCodeBits = 5;
constexpr unsigned kLiteralBits = 9;
/// Behind the third length of the codes of lengths stands how many zeros follow.
constexpr std::size_t kGapAfter = 3;
constexpr std::size_t kNoGap = ~std::size_t{0};
/// Codes of lengths: three for runs of zeros, then each length of its own.
constexpr unsigned kLengthOffset = 2;

template <class Lengths>
std::size_t endOf(const Lengths& lengths) noexcept {
    std::size_t end = lengths.size();
    while (end > 0 && lengths[end - 1] == 0) --end;
    return end;
}

/// The only one that occurs; 0 when none does.
std::size_t onlySymbol(std::span<const std::uint32_t> counts) noexcept {
    const auto found = std::find_if(counts.begin(), counts.end(), [](std::uint32_t count) { return count > 0; });
    return found == counts.end() ? 0 : static_cast<std::size_t>(found - counts.begin());
}

/// Gives the lengths as codes, each with the bits that follow it.
template <class Take>
void eachLengthCode(std::span<const std::uint8_t> lengths, Take take) {
    for (std::size_t at = 0; at < lengths.size();) {
        if (lengths[at] != 0) {
            take(lengths[at++] + kLengthOffset, 0U, 0U);
            continue;
        }
        std::size_t zeros = 0;
        while (lengths[at + zeros] == 0) ++zeros;  // the last length is none
        at += zeros;
        if (zeros >= 20) {
            take(2U, static_cast<std::uint32_t>(zeros - 20), 9U);
            continue;
        }
        if (zeros == 19) {
            take(0U, 0U, 0U);
            --zeros;
        }
        if (zeros >= 3) {
            take(1U, static_cast<std::uint32_t>(zeros - 3), 4U);
        } else {
            for (; zeros > 0; --zeros) take(0U, 0U, 0U);
        }
    }
}

}  // namespace

void SymbolCounts::add(const SymbolCounts& other) noexcept {
    symbols += other.symbols;
    for (std::size_t at = 0; at < literals.size(); ++at) literals[at] += other.literals[at];
    for (std::size_t at = 0; at < positions.size(); ++at) positions[at] += other.positions[at];
}

BlockCodes::BlockCodes(const SymbolCounts& counts, const BlockShape& shape) : counts_(counts), shape_(shape) {
    findCodeLengths(counts.literals, literals_);
    findCodeLengths(counts.positions, positions_);
    std::array<std::uint32_t, kLengthCodes> lengthCounts{};
    eachLengthCode(std::span(literals_).first(endOf(literals_)),
                   [&](std::size_t code, std::uint32_t, unsigned) { ++lengthCounts[code]; });
    if (findCodeLengths(lengthCounts, lengthCodes_) == 1) onlyLengthCode_ = onlySymbol(lengthCounts);
}

template <class Put>
void BlockCodes::putSmallTable(std::span<const std::uint8_t> lengths, std::size_t only, unsigned width,
                               std::size_t gapAfter, Put put) const {
    const std::size_t count = endOf(lengths);
    put(static_cast<std::uint32_t>(count), width);
    if (count == 0) {
        put(static_cast<std::uint32_t>(only), width);
        return;
    }
    for (std::size_t at = 0; at < count;) {
        const unsigned length = lengths[at++];
        if (length < 7) {
            put(length, 3U);
        } else {
            put((1U << (length - 3)) - 2, length - 3);
        }
        if (at != gapAfter) continue;
        std::size_t zeros = 0;
        while (zeros < 3 && at < count && lengths[at] == 0) {
            ++at;
            ++zeros;
        }
        put(static_cast<std::uint32_t>(zeros), 2U);
    }
}

template <class Put>
void BlockCodes::putLiteralTable(Put put) const {
    const std::size_t count = endOf(literals_);
    put(static_cast<std::uint32_t>(count), kLiteralBits);
    if (count == 0) {
        put(static_cast<std::uint32_t>(onlySymbol(counts_.literals)), kLiteralBits);
        return;
    }
    std::array<std::uint16_t, kLengthCodes> codes{};
    findCodes(lengthCodes_, codes);
    eachLengthCode(std::span(literals_).first(count), [&](std::size_t code, std::uint32_t rest, unsigned restBits) {
        put(codes[code], lengthCodes_[code]);
        put(rest, restBits);
    });
}

template <class Put>
void BlockCodes::putTables(Put put) const {
    put(counts_.symbols, kCountBits);
    putSmallTable(lengthCodes_, onlyLengthCode_, kLengthCodeBits, kGapAfter, put);
    putLiteralTable(put);
    putSmallTable(std::span(positions_).first(shape_.positions), onlySymbol(counts_.positions), shape_.positionBits,
                  kNoGap, put);
}

std::uint64_t BlockCodes::size() const {
    std::uint64_t bits = 0;
    putTables([&bits](std::uint32_t, unsigned n) { bits += n; });
    for (std::size_t at = 0; at < kLiterals; ++at) bits += std::uint64_t{counts_.literals[at]} * literals_[at];
    for (std::size_t at = 0; at < kMostPositions; ++at) {
        const std::size_t extra = at > 1 ? at - 1 : 0;
        bits += counts_.positions[at] * (positions_[at] + std::uint64_t{extra});
    }
    return bits;
}

void BlockCodes::write(std::span<const Symbol> symbols, PackedBits& bits) const {
    putTables([&bits](std::uint32_t value, unsigned n) { bits.put(value, n); });
    std::array<std::uint16_t, kLiterals> literals{};
    std::array<std::uint16_t, kMostPositions> positions{};
    findCodes(literals_, literals);
    findCodes(positions_, positions);
    for (const Symbol& symbol : symbols) {
        bits.put(literals[symbol.code], literals_[symbol.code]);
        if (symbol.code < kFirstMatch) continue;
        const unsigned code = positionCodeOf(symbol.distance);
        bits.put(positions[code], positions_[code]);
        if (code > 1) bits.put(symbol.distance - (1U << (code - 1)), code - 1);
    }
}

}  // namespace archiver::huffman_lz
