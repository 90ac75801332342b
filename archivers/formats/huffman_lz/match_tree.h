#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace archiver::huffman_lz {

/// An earlier place with the same bytes.
struct Match {
    std::uint16_t length;
    std::uint16_t distance;  ///< less 1
};

/// Finds earlier places with the same bytes: a binary tree of the window's places for each beginning of three bytes,
/// the nearest place at its root.
class MatchTree {
public:
    /// @param window  farthest distance plus 1; a power of two, at most 65536
    explicit MatchTree(std::size_t window);

    /// Begins with other bytes, before which there is nothing.
    void start(std::span<const unsigned char> bytes) noexcept;

    /// Takes the next place.
    /// @param matches  gets those that are longer than all nearer ones, the nearest first; room for kLongestMatch
    /// @return how many there are
    std::size_t find(Match* matches) noexcept;

    /// Takes the next places without looking for matches.
    void skip(std::size_t count) noexcept;

private:
    std::size_t insert(Match* matches) noexcept;

    std::size_t window_;
    std::unique_ptr<std::uint32_t[]> heads_;     ///< by the hash of three bytes
    std::unique_ptr<std::uint32_t[]> children_;  ///< two of each place in the window
    const unsigned char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::size_t at_ = 0;
    // Places are numbered on from one start to the next, so that the tables need not be emptied.
    std::uint32_t first_ = 1;
};

}  // namespace archiver::huffman_lz
