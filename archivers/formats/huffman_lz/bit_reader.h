#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>

#include "archivers/formats/huffman_lz/packed_source.h"

namespace archiver::huffman_lz {

/// A place in a bit stream whose bytes give their highest bit first. Decoders keep it in a local variable, so that it
/// lives in registers; hence the machine's own word, as 32-bit machines are slow with larger ones.
struct BitCursor {
    using Word = std::size_t;
    static constexpr unsigned kWordBits = sizeof(Word) * 8;
    /// Bits that `fill` makes certain: 56 or 24.
    static constexpr unsigned kCertain = kWordBits - 8;

    Word bits = 0;       ///< the next bits, the first one highest
    unsigned count = 0;  ///< how many of them are certain; what stands below is the beginning of what comes next
    const unsigned char* at = nullptr;        ///< the first byte that is not wholly in `bits`
    const unsigned char* lastFill = nullptr;  ///< `fill` a few times at most when `at` is not behind this

    /// Makes at least kCertain bits certain.
    void fill() noexcept {
        Word next = 0;
        for (std::size_t index = 0; index < sizeof(Word); ++index) next = next << 8 | at[index];
        bits |= next >> count;
        at += (kWordBits - 1 - count) >> 3;
        count |= kCertain;
    }

    /// The same where a longer word would still have enough.
    void fillShortWord() noexcept {
        if constexpr (kWordBits < 64) fill();
    }

    /// @param n  0 to 24
    [[nodiscard]] std::uint32_t peek(unsigned n) const noexcept {
        return static_cast<std::uint32_t>(bits >> 1 >> (kWordBits - 1 - n));
    }

    void drop(unsigned n) noexcept {
        bits <<= n;
        count -= n;
    }

    std::uint32_t take(unsigned n) noexcept {
        const std::uint32_t value = peek(n);
        drop(n);
        return value;
    }
};

/// The bits of a packed part, through a buffer of fixed size. A few zero bytes follow the last byte: the end of a
/// part need not fill the bits that a decoder looks at.
class BitReader {
public:
    BitReader();

    void start(PackedSource& source) noexcept;

    [[nodiscard]] const BitCursor& cursor() const noexcept { return cursor_; }
    void setCursor(const BitCursor& cursor) noexcept { cursor_ = cursor; }

    /// Loads bytes when the cursor stands too near to the end of those that are there.
    /// @return false when the part is used up, or cannot be read
    bool prepare() noexcept { return cursor_.at <= cursor_.lastFill || load(); }

    /// Takes 0 to 16 bits; zeros once the part is used up.
    std::uint32_t take(unsigned n) noexcept {
        fill();
        return cursor_.take(n);
    }
    /// Makes at least BitCursor::kCertain bits certain.
    void fill() noexcept {
        if (prepare())
            cursor_.fill();
        else
            usedUp();
    }

    /// Whether more was taken than the part holds, or it cannot be read.
    [[nodiscard]] bool failed() const noexcept { return failed_ || (ended_ && takenBehindEnd()); }

    /// What that means: kCannotRead when the file ended or could not be read, kHuffmanCode when the part's own codes
    /// lead beyond its end.
    [[nodiscard]] ReturnCode failure() const noexcept { return source_->failed() ? kCannotRead : kHuffmanCode; }

private:
    bool load() noexcept;
    [[nodiscard]] bool takenBehindEnd() const noexcept;
    void usedUp() noexcept { cursor_ = {0, BitCursor::kWordBits, cursor_.at, cursor_.lastFill}; }

    std::unique_ptr<unsigned char[]> buffer_;
    PackedSource* source_ = nullptr;
    BitCursor cursor_;
    const unsigned char* end_ = nullptr;
    bool ended_ = false;
    bool failed_ = false;
};

}  // namespace archiver::huffman_lz
