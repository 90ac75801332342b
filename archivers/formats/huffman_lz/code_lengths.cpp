#include "archivers/formats/huffman_lz/code_lengths.h"

#include <algorithm>
#include <array>

#include "archivers/formats/huffman_lz/block_shape.h"

namespace archiver::huffman_lz {
namespace {

constexpr std::size_t kMostCounted = 512;
constexpr unsigned kSymbolBits = 9;
using Weights = std::array<std::uint32_t, kMostCounted>;
/// Codes of each length.
using LengthCounts = std::array<std::uint32_t, kLongestCode + 1>;

/// Turns weights, lightest first, into the depths of their leaves, deepest first.
void weightsToDepths(Weights& a, std::size_t n) noexcept {
    // Phase 1: combines the two lightest of leaves and inner nodes; a combined one keeps the index of its parent.
    a[0] += a[1];
    std::size_t root = 0;
    std::size_t leaf = 2;
    for (std::size_t next = 1; next < n - 1; ++next) {
        if (leaf >= n || a[root] < a[leaf]) {
            a[next] = a[root];
            a[root++] = static_cast<std::uint32_t>(next);
        } else {
            a[next] = a[leaf++];
        }
        if (leaf >= n || (root < next && a[root] < a[leaf])) {
            a[next] += a[root];
            a[root++] = static_cast<std::uint32_t>(next);
        } else {
            a[next] += a[leaf++];
        }
    }
    // Phase 2: parents' indexes become depths of inner nodes.
    a[n - 2] = 0;
    for (std::size_t at = n - 2; at-- > 0;) a[at] = a[a[at]] + 1;
    // Phase 3: depths of inner nodes become those of leaves.
    std::size_t available = 1;
    std::uint32_t depth = 0;
    std::size_t inner = n - 1;
    std::size_t next = n;
    while (available > 0) {
        std::size_t used = 0;
        for (; inner > 0 && a[inner - 1] == depth; --inner) ++used;
        for (; available > used; --available) a[--next] = depth;
        available = 2 * used;
        ++depth;
    }
}

/// Cuts what is too long, and makes other codes longer until all have room again.
LengthCounts limited(const Weights& depths, std::size_t n) noexcept {
    LengthCounts counts{};
    std::uint32_t taken = 0;  // of the space of codes
    for (std::size_t at = 0; at < n; ++at) {
        const std::uint32_t length = std::min<std::uint32_t>(depths[at], kLongestCode);
        ++counts[length];
        taken += 1U << (kLongestCode - length);
    }
    for (; taken > 1U << kLongestCode; --taken) {
        // A leaf goes one level down, and one of the longest becomes its neighbour.
        unsigned length = kLongestCode - 1;
        while (counts[length] == 0) --length;
        --counts[length];
        counts[length + 1] += 2;
        --counts[kLongestCode];
    }
    return counts;
}

}  // namespace

std::size_t findCodeLengths(std::span<const std::uint32_t> counts, std::span<std::uint8_t> lengths) {
    std::fill(lengths.begin(), lengths.end(), std::uint8_t{0});
    std::array<std::uint32_t, kMostCounted> order;
    std::size_t used = 0;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
        if (counts[symbol] > 0) order[used++] = counts[symbol] << kSymbolBits | static_cast<std::uint32_t>(symbol);
    }
    if (used < 2) return used;
    std::sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(used));
    Weights weights;
    for (std::size_t at = 0; at < used; ++at) weights[at] = order[at] >> kSymbolBits;
    weightsToDepths(weights, used);
    LengthCounts left = limited(weights, used);
    unsigned length = kLongestCode;
    for (std::size_t at = 0; at < used; ++at) {
        while (left[length] == 0) --length;
        --left[length];
        lengths[order[at] & ((1U << kSymbolBits) - 1)] = static_cast<std::uint8_t>(length);
    }
    return used;
}

void findCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes) noexcept {
    std::array<std::uint32_t, kLongestCode + 2> next{};
    for (const std::uint8_t length : lengths) {
        if (length > 0) ++next[length + 1U];
    }
    // From counts of the next shorter length to the first code of each length.
    for (unsigned length = 2; length <= kLongestCode; ++length) next[length] = (next[length - 1] + next[length]) << 1;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] > 0) codes[symbol] = static_cast<std::uint16_t>(next[lengths[symbol]]++);
    }
}

}  // namespace archiver::huffman_lz
