#pragma once
#include <cstdint>
#include <memory>

#include "archivers/formats/huffman_lz/bit_reader.h"
#include "archivers/formats/huffman_lz/block_shape.h"
#include "archivers/formats/huffman_lz/huffman_table.h"
#include "archivers/formats/huffman_lz/output_window.h"

namespace archiver::huffman_lz {

/// Unpacks matches and literals in blocks, each with Huffman codes of its own: LZH's -lh4- to -lh7- and -lhx-, ARJ's
/// methods 1 to 3. Source: public descriptions of both formats.
class BlockDecoder {
public:
    BlockDecoder();

    /// Unpacks until the window is complete.
    /// @return kOk, kHuffmanCode when a code table or a match makes no sense, kCannotRead, kUserCancel
    ReturnCode decode(BitReader& bits, OutputWindow& window, const BlockShape& shape);

private:
    /// Tables take some 60 KB together.
    struct Tables {
        HuffmanTable<kLiterals, 11> literals;
        HuffmanTable<kMostPositions, 8> positions;
        HuffmanTable<kLengthCodes, 8> lengthCodes;
    };

    [[nodiscard]] bool readTables(BitReader& bits, const BlockShape& shape);
    template <class Table>
    [[nodiscard]] bool readSmallTable(BitReader& bits, Table& table, std::size_t symbols, unsigned width,
                                      std::size_t gapAfter);
    [[nodiscard]] bool readLiteralTable(BitReader& bits);
    ReturnCode decodeRun(BitReader& bits, OutputWindow& window, std::uint32_t& left) const;

    std::unique_ptr<Tables> tables_;
};

}  // namespace archiver::huffman_lz
