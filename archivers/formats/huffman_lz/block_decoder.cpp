#include "archivers/formats/huffman_lz/block_decoder.h"

#include <algorithm>
#include <array>

namespace archiver::huffman_lz {
namespace {

constexpr unsigned kCountBits = 16;
constexpr unsigned kLengthTableBits = 5;
constexpr unsigned kLiteralTableBits = 9;
constexpr std::size_t kNoGap = ~std::size_t{0};

}  // namespace

BlockDecoder::BlockDecoder() : tables_(std::make_unique<Tables>()) {}

/// Reads the codes of length codes or of positions.
/// @param width     bits of their count
/// @param gapAfter  after this many lengths, two bits tell how many zero lengths follow
template <class Table>
bool BlockDecoder::readSmallTable(BitReader& bits, Table& table, std::size_t symbols, unsigned width,
                                  std::size_t gapAfter) {
    const std::size_t count = bits.take(width);
    if (count == 0) {
        const std::size_t symbol = bits.take(width);
        if (symbol >= symbols) return false;
        table.buildSingle(symbol);
        return true;
    }
    if (count > symbols) return false;
    std::array<std::uint8_t, std::max(kLengthCodes + 3, kMostPositions)> lengths{};
    for (std::size_t index = 0; index < count;) {
        // Three bits; from 7 on each further 1 bit adds one, and a 0 bit ends.
        auto length = static_cast<std::uint8_t>(bits.take(3));
        if (length == 7) {
            while (bits.take(1) != 0) {
                if (++length > kLongestCode) return false;
            }
        }
        lengths[index++] = length;
        if (index == gapAfter) index += bits.take(2);
    }
    return table.build({lengths.data(), symbols});
}

bool BlockDecoder::readLiteralTable(BitReader& bits) {
    const std::size_t count = bits.take(kLiteralTableBits);
    if (count == 0) {
        const std::size_t symbol = bits.take(kLiteralTableBits);
        if (symbol >= kLiterals) return false;
        tables_->literals.buildSingle(symbol);
        return true;
    }
    if (count > kLiterals) return false;
    std::array<std::uint8_t, kLiterals> lengths{};
    for (std::size_t index = 0; index < count;) {
        bits.fill();
        BitCursor cursor = bits.cursor();
        const unsigned code = tables_->lengthCodes.take(cursor);
        bits.setCursor(cursor);
        if (code > 2) {
            lengths[index++] = static_cast<std::uint8_t>(code - 2);
            continue;
        }
        std::size_t zeros = 1;
        if (code == 1) zeros = 3 + bits.take(4);
        if (code == 2) zeros = 20 + bits.take(9);
        index += zeros;
        if (index > kLiterals) return false;
    }
    return tables_->literals.build(lengths);
}

bool BlockDecoder::readTables(BitReader& bits, const BlockShape& shape) {
    return readSmallTable(bits, tables_->lengthCodes, kLengthCodes, kLengthTableBits, 3) && readLiteralTable(bits) &&
           readSmallTable(bits, tables_->positions, shape.positions, shape.positionBits, kNoGap) && !bits.failed();
}

/// Decodes symbols of one block, until it ends or the window wants to be emptied.
/// @param left  symbols of the block that are still to come
ReturnCode BlockDecoder::decodeRun(BitReader& bits, OutputWindow& window, std::uint32_t& left) const {
    const Tables& tables = *tables_;
    const unsigned char* const oldest = window.oldest();
    const unsigned char* const limit = window.limit();
    unsigned char* at = window.at();
    std::uint32_t symbols = left;
    BitCursor cursor = bits.cursor();
    while (symbols > 0 && at < limit) {
        if (cursor.at > cursor.lastFill) [[unlikely]] {
            bits.setCursor(cursor);
            if (!bits.prepare()) {
                window.abandon(at);
                return bits.failure();
            }
            cursor = bits.cursor();
        }
        cursor.fill();
        --symbols;
        unsigned symbol = tables.literals.take(cursor);
        if (symbol < kFirstMatch) {
            *at++ = static_cast<unsigned char>(symbol);
            // There are bits for one more symbol.
            if (symbols == 0 || at == limit) break;
            --symbols;
            cursor.fillShortWord();
            symbol = tables.literals.take(cursor);
            if (symbol < kFirstMatch) {
                *at++ = static_cast<unsigned char>(symbol);
                continue;
            }
            cursor.fill();
        } else {
            cursor.fillShortWord();
        }
        const unsigned position = tables.positions.take(cursor);
        const unsigned extra = position - static_cast<unsigned>(position != 0);
        cursor.fillShortWord();
        const std::size_t distance = (std::size_t{position != 0} << extra) + cursor.take(extra) + 1;
        if (distance > static_cast<std::size_t>(at - oldest)) {
            window.abandon(at);
            return kHuffmanCode;
        }
        at = copyMatch(at, distance, symbol - kFirstMatch + kShortestMatch);
    }
    bits.setCursor(cursor);
    left = symbols;
    return window.commit(at) ? kOk : kUserCancel;
}

ReturnCode BlockDecoder::decode(BitReader& bits, OutputWindow& window, const BlockShape& shape) {
    std::uint32_t left = 0;
    while (!window.complete()) {
        if (left == 0) {
            left = bits.take(kCountBits);
            // The count has 16 bits and no block is empty.
            if (left == 0) left = 1U << kCountBits;
            if (!readTables(bits, shape)) return bits.failed() ? bits.failure() : kHuffmanCode;
        }
        const ReturnCode code = decodeRun(bits, window, left);
        if (code != kOk) return code;
        if (!window.complete() && bits.failed()) return bits.failure();
    }
    return kOk;
}

}  // namespace archiver::huffman_lz
