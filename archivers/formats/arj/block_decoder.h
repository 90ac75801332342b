#pragma once
#include <cstdint>
#include <memory>

#include "archivers/formats/arj/bit_reader.h"
#include "archivers/formats/arj/huffman_table.h"
#include "archivers/formats/arj/output_window.h"

namespace archiver::arj {

/// Unpacks methods 1 to 3: matches and literals in blocks, each with Huffman codes of its own. The scheme is that of
/// LZH's -lh7-. Source: the published technical notes of the format.
class BlockDecoder {
public:
    BlockDecoder();

    /// Unpacks until the window is complete.
    /// @return kOk, kHuffmanCode when a code table or a match makes no sense, kCannotRead, kUserCancel
    ReturnCode decode(BitReader& bits, OutputWindow& window);

private:
    static constexpr std::size_t kLiterals = 510;  ///< 0 to 255: a byte; from 256 on: a match of 3 bytes and more
    static constexpr std::size_t kPositions = 17;
    static constexpr std::size_t kLengthCodes = 19;

    /// Tables take some 60 KB together.
    struct Tables {
        HuffmanTable<kLiterals, 11> literals;
        HuffmanTable<kPositions, 8> positions;
        HuffmanTable<kLengthCodes, 8> lengthCodes;
    };

    [[nodiscard]] bool readTables(BitReader& bits);
    template <class Table>
    [[nodiscard]] bool readSmallTable(BitReader& bits, Table& table, std::size_t symbols, std::size_t gapAfter);
    [[nodiscard]] bool readLiteralTable(BitReader& bits);
    ReturnCode decodeRun(BitReader& bits, OutputWindow& window, std::uint32_t& left) const;

    std::unique_ptr<Tables> tables_;
};

}  // namespace archiver::arj
