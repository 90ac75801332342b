#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tovar {

/// A list that only grows. Its elements lie in blocks of one size, so that a list of a million elements never needs
/// twice its room while it grows, and no element moves.
/// @tparam Maximum  of elements
template <class Element, std::uint32_t Maximum = std::numeric_limits<std::int32_t>::max()>
class ChunkedList {
public:
    [[nodiscard]] std::uint32_t size() const noexcept { return size_; }

    /// Frees all blocks.
    void clear() noexcept {
        decltype(blocks_)().swap(blocks_);
        size_ = 0;
    }

    /// @throws std::bad_alloc; std::length_error when Maximum elements are there
    void append(const Element& element) {
        if (size_ == Maximum) {
            throw std::length_error("list is full");
        }
        if (size_ % kBlock == 0 && size_ / kBlock == blocks_.size()) {
            blocks_.push_back(std::make_unique_for_overwrite<Block>());
        }
        (*blocks_[size_ / kBlock])[size_ % kBlock] = element;
        ++size_;
    }

    /// @throws std::out_of_range
    [[nodiscard]] const Element& at(std::uint32_t index) const {
        if (index >= size_) {
            throw std::out_of_range("index outside the list");
        }
        return (*this)[index];
    }

    /// @param index  below size()
    [[nodiscard]] const Element& operator[](std::uint32_t index) const noexcept {
        return (*blocks_[index / kBlock])[index % kBlock];
    }

private:
    static constexpr std::uint32_t kBlock = 1024;  ///< elements in a block
    using Block = std::array<Element, kBlock>;

    std::vector<std::unique_ptr<Block>> blocks_;
    std::uint32_t size_ = 0;
};

}  // namespace tovar
