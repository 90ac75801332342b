#pragma once
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "archivers/formats/huffman_lz/bit_reader.h"

namespace archiver::huffman_lz {

/// Decodes canonical Huffman codes of at most 16 bits by looking them up: shorter codes first, equal lengths in the
/// order of their symbols, the first code all zeros.
/// @tparam kSymbols  at most 512
/// @tparam kBits     bits that the first look tells; longer codes need a second one
template <std::size_t kSymbols, unsigned kBits>
class HuffmanTable {
public:
    static constexpr unsigned kLongest = 16;
    static_assert(kSymbols <= 512 && kBits < kLongest);

    /// @param lengths  of the codes of symbols 0, 1, ...; 0 for a symbol that does not occur; at most kLongest
    /// @return false unless the codes fill the whole space exactly
    bool build(std::span<const std::uint8_t> lengths) noexcept {
        std::array<std::uint32_t, kLongest + 1> counts{};
        for (const std::uint8_t length : lengths) ++counts[length];
        counts[0] = 0;
        // Codes as numbers of kLongest bits: the first of each length.
        std::array<std::uint32_t, kLongest + 1> next{};
        std::uint32_t code = 0;
        for (unsigned length = 1; length <= kLongest; ++length) {
            next[length] = code;
            code += counts[length] << (kLongest - length);
        }
        if (code != 1U << kLongest) return false;

        std::size_t groups = 0;
        std::uint32_t openGroup = kNoGroup;
        // Lengths ascend with the codes, so each group of long codes is met in one go.
        for (unsigned length = kBits + 1; length <= kLongest; ++length) {
            const std::uint32_t end = next[length] + (counts[length] << (kLongest - length));
            for (std::uint32_t at = next[length]; at < end; at += 1U << (kLongest - length)) {
                const std::uint32_t group = at >> (kLongest - kBits);
                if (group == openGroup) continue;
                openGroup = group;
                first_[group] = static_cast<std::uint16_t>(groups++ << kLengthBits | kLongMark);
            }
        }
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            const unsigned length = lengths[symbol];
            if (length == 0) continue;
            const std::uint32_t start = next[length];
            next[length] += 1U << (kLongest - length);
            const auto entry = static_cast<std::uint16_t>(symbol << kLengthBits | length);
            if (length <= kBits) {
                std::fill_n(&first_[start >> (kLongest - kBits)], std::size_t{1} << (kBits - length), entry);
            } else {
                const std::size_t group = first_[start >> (kLongest - kBits)] >> kLengthBits;
                std::fill_n(&second_[group * kGroupSize + (start & (kGroupSize - 1))],
                            std::size_t{1} << (kLongest - length), entry);
            }
        }
        return true;
    }

    /// Makes a table of one symbol, which takes no bits.
    void buildSingle(std::size_t symbol) noexcept { first_.fill(static_cast<std::uint16_t>(symbol << kLengthBits)); }

    /// Takes one symbol. At least 16 bits must be certain.
    [[nodiscard]] unsigned take(BitCursor& cursor) const noexcept {
        std::uint32_t entry = first_[static_cast<std::size_t>(cursor.bits >> (BitCursor::kWordBits - kBits))];
        if ((entry & kLengthMask) == kLongMark) [[unlikely]] {
            const auto rest =
                static_cast<std::size_t>(cursor.bits >> (BitCursor::kWordBits - kLongest)) & (kGroupSize - 1);
            entry = second_[(entry >> kLengthBits) * kGroupSize + rest];
        }
        cursor.drop(entry & kLengthMask);
        return entry >> kLengthBits;
    }

private:
    // An entry: length in the low bits, symbol above; or the mark of long codes with the number of their group.
    static constexpr unsigned kLengthBits = 5;
    static constexpr std::uint32_t kLengthMask = (1U << kLengthBits) - 1;
    static constexpr std::uint32_t kLongMark = kLengthMask;
    static constexpr std::size_t kGroupSize = std::size_t{1} << (kLongest - kBits);
    static constexpr std::uint32_t kNoGroup = ~0U;
    // A group of a complete code holds two symbols or more.
    static constexpr std::size_t kMostGroups = kSymbols / 2;

    std::array<std::uint16_t, std::size_t{1} << kBits> first_{};
    std::array<std::uint16_t, kMostGroups * kGroupSize> second_{};
};

}  // namespace archiver::huffman_lz
