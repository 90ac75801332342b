#pragma once
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>

#include "archivers/formats/little_endian.h"

namespace archiver::ace {

/// Where packed bytes come from.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// Fills the room given.
    /// @return bytes stored, fewer than there is room for only at the end
    virtual std::size_t fill(std::span<char> into) = 0;
};

/// The state of a bit reader that a decoder's inner loop keeps in registers.
struct BitWindow {
    std::uint64_t bits = 0;  ///< the next bits, from the most significant down; zeros behind them
    unsigned count = 0;      ///< how many there are
    const char* next = nullptr;
    const char* end = nullptr;  ///< a whole number of words behind `next`

    /// The next bits as a number.
    /// @param width  1 to 32, at most count
    [[nodiscard]] std::uint32_t peek(unsigned width) const noexcept {
        return static_cast<std::uint32_t>(bits >> (64 - width));
    }
    void skip(unsigned width) noexcept {
        bits <<= width;
        count -= width;
    }
};

/// Bits of packed data: a row of 32-bit little-endian words, each used from its most significant bit down. Behind the
/// end come zeros.
class BitReader {
public:
    explicit BitReader(ByteSource& source) : source_(source), buffer_(new char[kBuffer]) {}

    [[nodiscard]] BitWindow window() const noexcept { return window_; }
    void setWindow(const BitWindow& window) noexcept { window_ = window; }

    /// Makes sure that a window holds at least 33 bits.
    static void refill(BitReader& reader, BitWindow& window) {
        if (window.count > 32) return;
        if (window.next == window.end) window = reader.more(window);
        window.bits |= static_cast<std::uint64_t>(little_endian::load32(window.next)) << (32 - window.count);
        window.next += 4;
        window.count += 32;
    }

    /// @param width  0 to 32
    std::uint32_t take(unsigned width) {
        if (width == 0) return 0;
        refill(*this, window_);
        const std::uint32_t value = window_.peek(width);
        window_.skip(width);
        return value;
    }

    /// The next 32 bits; they stay.
    std::uint32_t peek32() {
        refill(*this, window_);
        return window_.peek(32);
    }
    void skip(unsigned width) noexcept { window_.skip(width); }

    /// A number in Golomb-Rice form: `width` bits, and for every 1 bit behind them 2^width more, up to a 0 bit.
    /// @param width  0 to 31
    /// @return false for a number above 2^24: nothing has one, and the row of 1 bits could be as long as the archive
    bool takeGolombRice(unsigned width, std::uint32_t& value);

    /// Whether more bits were taken than there are.
    [[nodiscard]] bool overrun() const noexcept { return window_.count + wordsLeft() * 32 < pastEnd_ * 32; }

private:
    static constexpr std::size_t kBuffer = 32 << 10;

    [[nodiscard]] std::uint64_t wordsLeft() const noexcept {
        return static_cast<std::uint64_t>(window_.end - window_.next) / 4;
    }
    [[nodiscard]] BitWindow more(BitWindow window);

    ByteSource& source_;
    std::unique_ptr<char[]> buffer_;
    BitWindow window_;
    std::uint64_t pastEnd_ = 0;  ///< words of zeros given behind the end
};

}  // namespace archiver::ace
