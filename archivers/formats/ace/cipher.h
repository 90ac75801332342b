#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace archiver::ace {

/// The key that a password gives: a hash like the first form of SHA over one block, its words lowest byte first.
using Key = std::array<std::uint32_t, 5>;

/// @param password  bytes; those behind the 50th do not count
Key keyOf(std::string_view password) noexcept;

/// Blowfish under a member's key.
/// Source: B. Schneier, "Description of a New Variable-Length Key, 64-Bit Block Cipher", 1994
class Cipher {
public:
    explicit Cipher(const Key& key) noexcept;

    /// Enciphers one block. The key's own tables are made with it.
    void encrypt(std::uint32_t& left, std::uint32_t& right) const noexcept;

    /// Deciphers one block.
    void decrypt(std::uint32_t& left, std::uint32_t& right) const noexcept;

private:
    [[nodiscard]] std::uint32_t mix(std::uint32_t half) const noexcept;

    std::array<std::uint32_t, 18> subkeys_;
    std::array<std::array<std::uint32_t, 256>, 4> boxes_;
};

/// Deciphers a row of blocks, each chained to the one before; their words are stored lowest byte first.
class Decryption {
public:
    static constexpr std::size_t kBlock = 8;

    /// @param bytes  the next bytes, whole blocks; what is over at the end stays as it is
    void decrypt(const Cipher& cipher, std::span<char> bytes) noexcept;

private:
    std::uint32_t left_ = 0, right_ = 0;  ///< the block before, as it was stored
};

}  // namespace archiver::ace
