#include "archivers/formats/arj/fastest_decoder.h"

#include <algorithm>
#include <bit>

namespace archiver::arj {

using huffman_lz::BitCursor;
using huffman_lz::BitReader;
using huffman_lz::copyMatch;
using huffman_lz::OutputWindow;

namespace {

/// Takes a number whose leading 1 bits tell its width: kStart and one more for each, at most kStop, where no 0 bit
/// closes them. Each width goes on counting where the one before ended.
template <unsigned kStart, unsigned kStop>
std::uint32_t takeLadder(BitCursor& cursor) noexcept {
    constexpr unsigned kMostOnes = kStop - kStart;
    const auto ones = std::min(static_cast<unsigned>(std::countl_one(cursor.bits)), kMostOnes);
    cursor.drop(ones + static_cast<unsigned>(ones < kMostOnes));
    const unsigned width = kStart + ones;
    return (1U << width) - (1U << kStart) + cursor.take(width);
}

constexpr unsigned kLiteralBits = 9;
/// Literals for which the bits of one fill suffice, with one bit left to tell what comes next.
constexpr unsigned kLiteralsAFill = (BitCursor::kCertain - 1) / kLiteralBits;

/// Decodes until the window wants to be emptied.
ReturnCode decodeRun(BitReader& bits, OutputWindow& window) {
    const unsigned char* const oldest = window.oldest();
    const unsigned char* const limit = window.limit();
    unsigned char* at = window.at();
    BitCursor cursor = bits.cursor();
    while (at < limit) {
        if (cursor.at > cursor.lastFill) [[unlikely]] {
            bits.setCursor(cursor);
            if (!bits.prepare()) {
                window.abandon(at);
                return bits.failure();
            }
            cursor = bits.cursor();
        }
        cursor.fill();
        for (unsigned literals = 0; literals < kLiteralsAFill && cursor.peek(1) == 0 && at < limit; ++literals) {
            *at++ = static_cast<unsigned char>(cursor.take(kLiteralBits));
        }
        if (cursor.peek(1) == 0 || at == limit) continue;
        cursor.fill();
        // Length and position take 14 and 17 bits at most.
        const std::size_t length = takeLadder<0, 7>(cursor) + 2;
        cursor.fillShortWord();
        const std::size_t distance = std::size_t{takeLadder<9, 13>(cursor)} + 1;
        if (distance > static_cast<std::size_t>(at - oldest)) {
            window.abandon(at);
            return kHuffmanCode;
        }
        at = copyMatch(at, distance, length);
    }
    bits.setCursor(cursor);
    return window.commit(at) ? kOk : kUserCancel;
}

}  // namespace

ReturnCode decodeFastest(BitReader& bits, OutputWindow& window) {
    while (!window.complete()) {
        const ReturnCode code = decodeRun(bits, window);
        if (code != kOk) return code;
        if (!window.complete() && bits.failed()) return bits.failure();
    }
    return kOk;
}

}  // namespace archiver::arj
