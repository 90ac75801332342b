#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "archivers/formats/rar/bit_input.h"

namespace archiver::rar {

/// A canonical prefix code: symbols by the length of their codes, those of one length in their order.
class PrefixCode {
public:
    static constexpr int kLongest = 15;
    static constexpr std::size_t kMostSymbols = 299;

    /// @param lengths  of each symbol's code, 0 to 15, 0 for one that has none; at most kMostSymbols
    /// @return false when there are more codes than lengths have room for; fewer are allowed
    bool build(std::span<const std::uint8_t> lengths) noexcept;

    /// Takes one symbol; the input holds kLongest bits at least.
    /// @return -1 when the bits are no code
    int take(BitInput& bits) const noexcept {
        const Short entry = short_[bits.peek(kShort)];
        if (entry.length == 0) return takeLong(bits);
        bits.drop(entry.length);
        return entry.symbol;
    }

private:
    static constexpr int kShort = 10;

    /// What bits begin with; length 0 when the code is longer.
    struct Short {
        std::uint16_t symbol = 0;
        std::uint8_t length = 0;
    };

    int takeLong(BitInput& bits) const noexcept;

    std::array<Short, std::size_t{1} << kShort> short_{};
    std::array<std::uint16_t, kMostSymbols> symbols_{};
    std::array<std::uint32_t, kLongest + 1> end_{};    ///< behind the codes of a length, as kLongest bits
    std::array<std::uint16_t, kLongest + 1> first_{};  ///< index of a length's first symbol
};

}  // namespace archiver::rar
