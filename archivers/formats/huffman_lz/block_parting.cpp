#include "archivers/formats/huffman_lz/block_parting.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace archiver::huffman_lz {
namespace {

/// Symbols of the smallest parts; more where there are so many parts that choosing among them would take its time.
constexpr std::size_t kSmallestPart = 1024;
constexpr std::size_t kMostParts = 160;
constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::min();

/// A block that may yet be put together with the next one.
struct Part {
    Block block;
    std::int64_t gain;  ///< bits that are saved then
};

Block blockOf(const SymbolCounts& counts, const BlockShape& shape) {
    return {counts, BlockCodes(counts, shape).size()};
}

std::int64_t gainOf(const Block& one, const Block& next, const BlockShape& shape) {
    if (one.counts.symbols + next.counts.symbols > kMostSymbols) return kNever;
    SymbolCounts both = one.counts;
    both.add(next.counts);
    return static_cast<std::int64_t>(one.size + next.size) - static_cast<std::int64_t>(BlockCodes(both, shape).size());
}

}  // namespace

std::vector<Block> partIntoBlocks(std::span<const Symbol> symbols, const BlockShape& shape) {
    const std::size_t size = std::max(kSmallestPart, symbols.size() / kMostParts + 1);
    std::vector<Part> parts;
    while (!symbols.empty()) {
        SymbolCounts counts;
        const std::size_t count = std::min(size, symbols.size());
        for (const Symbol& symbol : symbols.first(count)) counts.add(symbol);
        symbols = symbols.subspan(count);
        parts.push_back({blockOf(counts, shape), kNever});
    }
    for (std::size_t at = 0; at + 1 < parts.size(); ++at) {
        parts[at].gain = gainOf(parts[at].block, parts[at + 1].block, shape);
    }
    for (;;) {
        const auto best = std::max_element(parts.begin(), parts.end(),
                                           [](const Part& one, const Part& other) { return one.gain < other.gain; });
        if (best == parts.end() || best->gain < 0) break;
        best->block.counts.add((best + 1)->block.counts);
        best->block = blockOf(best->block.counts, shape);
        parts.erase(best + 1);
        best->gain = best + 1 == parts.end() ? kNever : gainOf(best->block, (best + 1)->block, shape);
        if (best != parts.begin()) (best - 1)->gain = gainOf((best - 1)->block, best->block, shape);
    }
    std::vector<Block> blocks;
    blocks.reserve(parts.size());
    for (const Part& part : parts) blocks.push_back(part.block);
    return blocks;
}

}  // namespace archiver::huffman_lz
