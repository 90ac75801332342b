#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "drivers/chunked_list.h"

namespace tovar {

/// Keeps texts one after the other in blocks; they are freed all at once.
/// @tparam Character  as which they are kept: wchar_t, or unsigned char for characters up to U+00FF
template <class Character>
class TextArena {
public:
    /// @return the kept text; null for an empty one
    /// @throws std::bad_alloc
    const Character* keep(std::wstring_view text) {
        if (text.empty()) return nullptr;
        if (text.size() > room_) addBlock(text.size());
        Character* const kept = free_;
        std::transform(text.begin(), text.end(), kept, [](wchar_t each) { return static_cast<Character>(each); });
        free_ += text.size();
        room_ -= text.size();
        return kept;
    }

    void clear() noexcept {
        decltype(blocks_)().swap(blocks_);
        free_ = nullptr;
        room_ = 0;
    }

private:
    static constexpr std::size_t kBlock = 65'536 / sizeof(Character);  ///< characters in a block

    void addBlock(std::size_t least) {
        const std::size_t size = std::max(kBlock, least);
        auto block = std::make_unique_for_overwrite<Character[]>(size);
        Character* const start = block.get();
        blocks_.push_back(std::move(block));
        free_ = start;
        room_ = size;
    }

    std::vector<std::unique_ptr<Character[]>> blocks_;
    Character* free_ = nullptr;
    std::size_t room_ = 0;  ///< characters free in the last block
};

/// Keeps each different text once and gives it a number, from 0 in the order in which they came.
class InternedTexts {
public:
    InternedTexts();

    /// @return the text's number, a new one if it was not there
    /// @throws std::bad_alloc, std::length_error; what was there stays
    std::uint32_t intern(std::wstring_view text);

    [[nodiscard]] std::uint32_t size() const noexcept { return texts_.size(); }

    /// @throws std::out_of_range
    [[nodiscard]] std::wstring_view at(std::uint32_t number) const {
        const Text& text = texts_.at(number);
        return {text.characters, text.length};
    }

    void clear() noexcept;

private:
    struct Text {
        const wchar_t* characters;
        std::uint32_t length;
        std::uint32_t hash;
    };

    [[nodiscard]] std::uint32_t hashOf(std::wstring_view text) const noexcept;
    void growSlots();

    ChunkedList<Text> texts_;
    TextArena<wchar_t> arena_;
    std::vector<std::uint32_t> slots_;  ///< open addressing: number + 1, or 0 when free; a power of two in size
    std::uint32_t key_;                 ///< of the hash
};

}  // namespace tovar
