#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace archiver::zip {

/// The traditional encryption of ZIP, for writing: the only one that every program reads.
/// Source: PKWARE APPNOTE 6.3.10, 6.1
class TraditionalCipher {
public:
    static constexpr std::size_t kHeaderSize = 12;
    using Header = std::array<char, kHeaderSize>;

    /// @param password  bytes, in whatever code page; not empty
    explicit TraditionalCipher(std::string_view password) noexcept;

    /// The bytes that stand before a member's data. First of all.
    /// @param check  the upper byte of its checksum, or of its time when the checksum follows the data
    [[nodiscard]] Header header(std::uint8_t check);

    /// Encrypts the bytes that follow those before.
    void encrypt(std::span<char> bytes) noexcept;

private:
    void update(std::uint8_t plain) noexcept;
    [[nodiscard]] std::uint8_t next() const noexcept;

    std::uint32_t keys_[3] = {0x12345678, 0x23456789, 0x34567890};
};

}  // namespace archiver::zip
