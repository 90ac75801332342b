#pragma once
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/compact_text.h"
#include "shell/breather.h"

namespace tovar {

/// Texts in lower case like foldCase's, without asking the system for each.
class CaseFolder {
public:
    CaseFolder();
    /// @param place  below text.size()
    [[nodiscard]] wchar_t lowerAt(const CompactText& text, std::size_t place) const {
        const auto character = static_cast<std::uint32_t>(text[place]);
        return character < lower_.size() && (character < 0xD800 || character > 0xDFFF)
                   ? static_cast<wchar_t>(lower_[character])
                   : lowerOfRare(text.wide(), place);
    }
    /// @param folded  is replaced
    void fold(const CompactText& text, std::wstring& folded) const;
    /// @param folded  a text in lower case
    [[nodiscard]] bool startsWith(const CompactText& text, std::wstring_view folded) const;
    /// @return whether characters up to U+00FF are so in lower case too
    [[nodiscard]] bool keepsPlain() const noexcept;

private:
    [[nodiscard]] static wchar_t lowerOfRare(std::wstring_view text, std::size_t place);

    std::vector<std::uint16_t> lower_;  ///< of each character of the basic plane
};

/// An item on its way to its place: ordered by its key first, then by its number.
struct KeyedItem {
    std::uint32_t high = 0, low = 0;  ///< the two halves of the key
    std::uint32_t item = 0;

    void setKey(std::uint64_t key) noexcept {
        high = static_cast<std::uint32_t>(key >> 32);
        low = static_cast<std::uint32_t>(key);
    }
    [[nodiscard]] bool hasKeyOf(const KeyedItem& other) const noexcept {
        return high == other.high && low == other.low;
    }
};

enum class Direction { Ascending, Descending };

/// Orders items by their keys; equal ones by their numbers, whatever the direction.
void orderByKeys(std::span<KeyedItem> items, Direction direction, PacedWork& work);

/// The text of an item, valid until the next call.
using TextOfItem = std::function<CompactText(std::uint32_t item)>;

/// Orders items by their texts, letters of either case alike: character by character as std::wstring compares, equal
/// ones by their numbers, whatever the direction. Texts are looked at a few characters at a time, and only where those
/// before them are equal; none is kept. Keys count for nothing, before and after.
void orderByTexts(std::span<KeyedItem> items, const TextOfItem& textOf, const CaseFolder& letters, Direction direction,
                  PacedWork& work);

/// @return for each of the texts with the numbers 0 to count - 1 how many different ones stand before it in ascending
///         order, letters of either case alike
[[nodiscard]] std::vector<std::uint32_t> ranksOfTexts(std::uint32_t count, const TextOfItem& textOf,
                                                      const CaseFolder& letters, PacedWork& work);

}  // namespace tovar
