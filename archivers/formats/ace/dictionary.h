#pragma once
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace archiver::ace {

/// The last unpacked bytes, which matches copy from. Takes memory as bytes arrive, never as a header claims.
class Dictionary {
public:
    /// No match reaches farther back.
    static constexpr std::uint32_t kReach = 4U << 20;

    /// Forgets everything; the memory stays for the next bytes.
    void clear() noexcept {
        position_ = 0;
        written_ = 0;
    }

    /// Room for the next bytes, in one piece: at least 1 byte, at most `most`, which is more than 0. What stands
    /// there is beyond the reach of any match. May move the dictionary.
    std::span<char> room(std::size_t most);

    /// Takes bytes that were put into the room.
    void commit(std::size_t bytes) noexcept {
        position_ += bytes;
        written_ += bytes;
    }

    /// Takes bytes that were made elsewhere.
    void append(std::span<const char> bytes);

    /// Bytes there ever were.
    [[nodiscard]] std::uint64_t written() const noexcept { return written_; }

    /// Copies earlier bytes into the room. A copy may overlap itself, and spoil up to kSlack bytes behind it.
    /// @param to        in the room
    /// @param distance  1 to kReach, at most the bytes there were before `to`
    void copy(char* to, std::size_t distance, std::size_t length) noexcept {
        const auto before = static_cast<std::size_t>(to - memory_.data());
        if (distance > before) {
            copyAround(to, before + size_ - distance, length);
        } else if (distance >= kStep) {
            const char* from = to - distance;
            for (std::size_t done = 0; done < length; done += kStep) std::memcpy(to + done, from + done, kStep);
        } else if (distance == 1) {
            std::memset(to, to[-1], length);
        } else {
            for (const char* from = to - distance; length != 0; --length) *to++ = *from++;
        }
    }

private:
    static constexpr std::size_t kStep = 16;
    static constexpr std::size_t kSlack = kStep;
    static constexpr std::size_t kFirstSize = 64U << 10;
    /// The oldest bytes are beyond reach, so that room and slack spoil nothing.
    static constexpr std::size_t kFullSize = kReach + (256U << 10);

    void copyAround(char* to, std::size_t from, std::size_t length) noexcept;

    std::vector<char> memory_;  ///< size_ bytes and the slack
    std::size_t size_ = 0;      ///< starts over at the front once it is kFullSize
    std::size_t position_ = 0;  ///< of the next byte
    std::uint64_t written_ = 0;
};

}  // namespace archiver::ace
