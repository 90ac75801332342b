#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace archiver::rar {

/// The last bytes that were unpacked, from which matches are copied: 4 MiB, which is the most that data of RAR 3 and 4
/// reaches back, and less while there are fewer. How much a header asks for is not looked at: not all tell the truth.
class Window {
public:
    static constexpr std::size_t kMost = std::size_t{4} << 20;
    /// Bytes that can be put after one call of `makeRoom`.
    static constexpr std::size_t kRoom = 512;

    /// Forgets everything; positions start at 0 again.
    void clear() noexcept { position_ = 0; }

    /// Bytes that were put since.
    [[nodiscard]] std::uint64_t position() const noexcept { return position_; }

    /// Gets the memory for what is put next.
    void makeRoom() {
        if (size_ < kMost && position_ + kRoom > size_) grow();
    }

    void put(std::uint8_t byte) noexcept { bytes_[position_++ & (size_ - 1)] = byte; }

    /// Copies a match.
    /// @param length  at most kRoom
    /// @return false when it reaches back behind the first byte
    bool copy(std::uint32_t distance, std::uint32_t length) noexcept;

    /// Bytes from one position to another, not more than kMost back; in two pieces when they lie at the end.
    [[nodiscard]] std::pair<std::span<const std::uint8_t>, std::span<const std::uint8_t>> bytes(
        std::uint64_t begin, std::uint64_t end) const noexcept;

private:
    void grow();

    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_ = 0;  ///< a power of two
    std::uint64_t position_ = 0;
};

}  // namespace archiver::rar
