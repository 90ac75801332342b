#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "archivers/formats/huffman_lz/block_shape.h"
#include "archivers/formats/huffman_lz/block_writer.h"

namespace archiver::huffman_lz {

struct Block {
    SymbolCounts counts;
    std::uint64_t size;  ///< in bits
};

/// Parts symbols into blocks of at most kMostSymbols, so that each has codes that fit it: small parts are put together
/// with their neighbours as long as that saves bits.
std::vector<Block> partIntoBlocks(std::span<const Symbol> symbols, const BlockShape& shape);

}  // namespace archiver::huffman_lz
