#pragma once
#include <cstddef>
#include <span>
#include <vector>

#include "archivers/formats/huffman_lz/block_shape.h"
#include "archivers/formats/huffman_lz/packed_bits.h"
#include "archivers/formats/huffman_lz/symbol_finder.h"

namespace archiver::huffman_lz {

/// Packs bytes into blocks of Huffman codes over matches and literals, each block as long as its codes fit.
///
/// Blocks know nothing of one another but the bytes before: long data can be packed in pieces at the same time, and the
/// bits put together. Source: public descriptions of the LHA format; J. Storer, T. Szymanski, "Data compression via
/// textual substitution" (1982)
class BlockEncoder {
public:
    /// @param shape  of 13 to 17 positions
    explicit BlockEncoder(const BlockShape& shape) : shape_(shape), finder_(windowOf(shape)) {}

    /// How far back matches reach at most.
    static constexpr std::size_t windowOf(const BlockShape& shape) noexcept {
        return std::size_t{1} << (shape.positions - 1);
    }

    /// Packs bytes.
    /// @param bytes    at most 2 GiB
    /// @param history  so many of them at the beginning were packed before, and may be referred to
    /// @param bits     gets whole blocks, behind what it holds
    void encode(std::span<const unsigned char> bytes, std::size_t history, PackedBits& bits);

private:
    BlockShape shape_;
    SymbolFinder finder_;
    std::vector<Symbol> symbols_;
};

}  // namespace archiver::huffman_lz
