#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace archiver::huffman_lz {

/// A sequence of bits that grows at its end; each byte takes its highest bit first.
class PackedBits {
public:
    /// @param value  below 2^n
    /// @param n      0 to 24
    void put(std::uint32_t value, unsigned n) {
        pending_ = pending_ << n | value;
        count_ += n;
        while (count_ >= 8) {
            count_ -= 8;
            bytes_.push_back(static_cast<char>(pending_ >> count_ & 0xFF));
        }
    }

    /// Appends all bits of another sequence.
    void append(const PackedBits& other);

    /// Gives the whole bytes that there are and forgets them; the bits behind them stay.
    [[nodiscard]] std::string takeBytes() { return std::exchange(bytes_, {}); }

    /// Fills the last byte with zeros.
    void fillByte() {
        if (count_ > 0) put(0, 8 - count_);
    }

    /// Forgets all bits and keeps the memory.
    void clear() noexcept {
        bytes_.clear();
        count_ = 0;
    }

    /// Whole bytes.
    [[nodiscard]] std::string_view bytes() const noexcept { return bytes_; }

private:
    std::string bytes_;
    std::uint32_t pending_ = 0;  ///< the last bits, lowest; what is above them was taken
    unsigned count_ = 0;         ///< of them, below 8
};

}  // namespace archiver::huffman_lz
