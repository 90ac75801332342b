#pragma once
#include <cstddef>
#include <cstdint>

#include "shell/regional.h"

namespace tovar {

/// Numbers that order like sizes written with groupedNumber, right-justified in a fixed width and cut to it on the
/// left, when those are compared as texts.
///
/// Blanks come before digits, and each place from the right is a digit in all texts or a separator in all, so whatever
/// fits into the width orders like its number. A longer text fills the width with its last digits: it stands with those
/// that fill it too, ordered by these digits.
class SizeKeys {
public:
    SizeKeys(const RegionalSettings& regional, std::size_t width);

    /// @return false when the region's separators leave no such order: the texts themselves have to be compared
    [[nodiscard]] bool hold() const noexcept { return fullWidth_ != 0; }

    /// @return 0 to 2 * 10^19 - 1
    [[nodiscard]] std::uint64_t of(std::uint64_t size) const noexcept {
        return size < fullWidth_ ? size : fullWidth_ * 10 + size % (fullWidth_ * 10);
    }

private:
    std::uint64_t fullWidth_ = 0;  ///< the least number whose text fills the width; a power of ten
};

}  // namespace tovar
