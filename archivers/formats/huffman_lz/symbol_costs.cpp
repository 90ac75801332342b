#include "archivers/formats/huffman_lz/symbol_costs.h"

#include <algorithm>
#include <cmath>

namespace archiver::huffman_lz {
namespace {

std::uint32_t extraBits(std::size_t position) noexcept {
    return position > 1 ? static_cast<std::uint32_t>(position - 1) : 0;
}

/// A symbol that did not occur counts as half of one that occurred once.
template <std::size_t kCount>
void fromCounts(const std::array<std::uint32_t, kCount>& counts, std::array<std::uint32_t, kCount>& costs) {
    std::uint32_t total = 0;
    for (const std::uint32_t count : counts) total += count;
    const float whole = std::log2(static_cast<float>(total) + 1);
    for (std::size_t at = 0; at < kCount; ++at) {
        const float part = counts[at] == 0 ? -1.0F : std::log2(static_cast<float>(counts[at]));
        const float bits = std::clamp(whole - part, 1.0F, static_cast<float>(kLongestCode));
        costs[at] = static_cast<std::uint32_t>(bits * SymbolCosts::kBit);
    }
}

}  // namespace

SymbolCosts::SymbolCosts(std::span<const unsigned char> bytes) {
    constexpr std::uint32_t kCommonMatch = 4;
    constexpr std::uint32_t kRareMatch = 6;
    constexpr std::uint32_t kPosition = 3;
    std::array<std::uint32_t, kLiterals> counts{};
    for (const unsigned char byte : bytes) ++counts[byte];
    fromCounts(counts, codes_);
    for (std::size_t code = kFirstMatch; code < kLiterals; ++code) {
        const auto length = static_cast<std::uint32_t>(code - kFirstMatch + 1);
        codes_[code] = (kCommonMatch + std::min(positionCodeOf(length), kRareMatch)) * kBit;
    }
    for (std::size_t at = 0; at < kMostPositions; ++at) positions_[at] = (kPosition + extraBits(at)) * kBit;
}

void SymbolCosts::learn(const SymbolCounts& counts) {
    fromCounts(counts.literals, codes_);
    fromCounts(counts.positions, positions_);
    for (std::size_t at = 0; at < kMostPositions; ++at) positions_[at] += extraBits(at) * kBit;
}

}  // namespace archiver::huffman_lz
