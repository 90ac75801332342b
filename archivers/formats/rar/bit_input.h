#pragma once
#include <cstdint>
#include <span>

#include "archivers/formats/rar/packed_bytes.h"

namespace archiver::rar {

/// Packed bytes as bits, the highest of each byte first. Behind the last one come zeros, and `overrun` tells of it.
class BitInput {
public:
    /// @param source  outlives this
    explicit BitInput(PackedBytes& source) : source_(source) {}

    /// Begins with the first bit of what the source was opened for.
    void begin() noexcept;

    /// Sees to it that 32 bits can be taken, at least.
    void fill() {
        if (available_ < 32) refill();
    }

    /// The next bits, which stay where they are.
    /// @param count  1 to 32, and no more than `fill` has seen to
    [[nodiscard]] std::uint32_t peek(int count) const noexcept {
        return static_cast<std::uint32_t>(bits_ >> (64 - count));
    }
    void drop(int count) noexcept {
        bits_ <<= count;
        available_ -= count;
    }
    /// @param count  0 to 32, and no more than `fill` has seen to
    std::uint32_t take(int count) noexcept {
        if (count == 0) return 0;
        const std::uint32_t taken = peek(count);
        drop(count);
        return taken;
    }
    std::uint8_t takeByte() {
        fill();
        return static_cast<std::uint8_t>(take(8));
    }
    /// Goes to the next whole byte.
    void align() noexcept { drop(available_ % 8); }

    /// Whether bits were taken that are not there.
    [[nodiscard]] bool overrun() const noexcept { return available_ < missing_; }

    /// kOk, or what reading the source failed with.
    [[nodiscard]] ReturnCode error() const noexcept { return error_; }

private:
    void refill();

    PackedBytes& source_;
    std::span<const char> piece_;
    std::uint64_t bits_ = 0;  ///< from the highest one on
    int available_ = 0;       ///< bits in it
    int missing_ = 0;         ///< zeros that were put behind the end and may still be among them
    ReturnCode error_ = kOk;
};

}  // namespace archiver::rar
