#include "archivers/formats/huffman_lz/block_encoder.h"

#include <algorithm>

#include "archivers/formats/huffman_lz/block_parting.h"
#include "archivers/formats/huffman_lz/block_writer.h"

namespace archiver::huffman_lz {

void BlockEncoder::encode(std::span<const unsigned char> bytes, std::size_t history, PackedBits& bits) {
    symbols_.clear();
    finder_.find(bytes, history, symbols_);
    std::span<const Symbol> rest(symbols_);
    for (const Block& block : partIntoBlocks(symbols_, shape_)) {
        BlockCodes(block.counts, shape_).write(rest.first(block.counts.symbols), bits);
        rest = rest.subspan(block.counts.symbols);
    }
}

}  // namespace archiver::huffman_lz
