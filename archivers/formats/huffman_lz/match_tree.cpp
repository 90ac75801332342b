#include "archivers/formats/huffman_lz/match_tree.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "archivers/formats/huffman_lz/block_shape.h"

namespace archiver::huffman_lz {
namespace {

constexpr unsigned kHashBits = 15;
constexpr std::uint32_t kNone = 0;
/// Places that are looked at for one; far more than a tree of random bytes is deep.
constexpr unsigned kMostSteps = 96;
/// Numbers of places stay below this.
constexpr std::uint32_t kLastNumber = 0xF0000000;

std::uint32_t hashOf(const unsigned char* bytes) noexcept {
    const std::uint32_t value = bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16;
    return (value * 0x9E3779B1U) >> (32 - kHashBits);
}

/// How many bytes are the same, from `length` on.
std::size_t sameBytes(const unsigned char* one, const unsigned char* other, std::size_t length,
                      std::size_t most) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
        while (most - length >= sizeof(std::size_t)) {
            std::size_t a = 0;
            std::size_t b = 0;
            std::memcpy(&a, one + length, sizeof a);
            std::memcpy(&b, other + length, sizeof b);
            if (a != b) return length + static_cast<std::size_t>(std::countr_zero(a ^ b)) / 8;
            length += sizeof(std::size_t);
        }
    }
    while (length < most && one[length] == other[length]) ++length;
    return length;
}

}  // namespace

MatchTree::MatchTree(std::size_t window)
    : window_(window),
      heads_(std::make_unique<std::uint32_t[]>(std::size_t{1} << kHashBits)),
      children_(std::make_unique<std::uint32_t[]>(window * 2)) {}

void MatchTree::start(std::span<const unsigned char> bytes) noexcept {
    first_ += static_cast<std::uint32_t>(size_);
    if (bytes.size() >= kLastNumber - first_) {
        std::fill_n(heads_.get(), std::size_t{1} << kHashBits, kNone);
        first_ = 1;
    }
    bytes_ = bytes.data();
    size_ = bytes.size();
    at_ = 0;
}

std::size_t MatchTree::find(Match* matches) noexcept {
    const std::size_t count = insert(matches);
    ++at_;
    return count;
}

void MatchTree::skip(std::size_t count) noexcept {
    Match ignored[kLongestMatch];
    for (; count > 0; --count, ++at_) insert(ignored);
}

std::size_t MatchTree::insert(Match* matches) noexcept {
    const std::size_t most = std::min(size_ - at_, kLongestMatch);
    if (most < kShortestMatch) return 0;
    const unsigned char* const here = bytes_ + at_;
    const std::uint32_t number = first_ + static_cast<std::uint32_t>(at_);
    const std::size_t mask = window_ - 1;
    // The one a whole window back has this one's room in the table.
    const std::uint32_t oldest = at_ < window_ ? first_ : number - static_cast<std::uint32_t>(window_) + 1;
    std::uint32_t& head = heads_[hashOf(here)];
    std::uint32_t other = head;
    head = number;

    std::uint32_t* smaller = &children_[(number & mask) * 2];
    std::uint32_t* larger = smaller + 1;
    std::size_t smallerLength = 0;
    std::size_t largerLength = 0;
    std::size_t longest = kShortestMatch - 1;
    std::size_t count = 0;
    for (unsigned steps = kMostSteps; other >= oldest && steps > 0; --steps) {
        std::uint32_t* const children = &children_[(other & mask) * 2];
        const std::uint32_t distance = number - other;
        const unsigned char* const there = here - distance;
        const std::size_t length = sameBytes(there, here, std::min(smallerLength, largerLength), most);
        if (length > longest) {
            longest = length;
            matches[count++] = {static_cast<std::uint16_t>(length), static_cast<std::uint16_t>(distance - 1)};
            if (length == most) {
                *smaller = children[0];
                *larger = children[1];
                return count;
            }
        }
        if (there[length] < here[length]) {
            *smaller = other;
            smaller = children + 1;
            smallerLength = length;
            other = *smaller;
        } else {
            *larger = other;
            larger = children;
            largerLength = length;
            other = *larger;
        }
    }
    *smaller = kNone;
    *larger = kNone;
    return count;
}

}  // namespace archiver::huffman_lz
