#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "drivers/compact_text.h"

namespace tovar {

/// What a name is looked for by: a text that it contains anywhere, or, when the text holds a "*" or a "?", a pattern
/// that the whole name must fit: "*" stands for any characters or none, "?" for exactly one. Letters of either case are
/// alike. As everywhere on the system, "*.*" fits every name, also one without a dot.
class NamePattern {
public:
    NamePattern() = default;
    explicit NamePattern(std::wstring_view text);

    /// An empty text fits no name.
    [[nodiscard]] bool empty() const noexcept { return text_.empty(); }

    /// @param charactersRead  grows by the number of characters that were looked at; at most the product of the
    ///                        lengths of text and name, in most cases the length of the name
    [[nodiscard]] bool matches(const CompactText& name, std::uint64_t& charactersRead) const;

private:
    [[nodiscard]] bool isContainedIn(std::wstring_view name, std::uint64_t& charactersRead) const;
    [[nodiscard]] bool fitsWhole(std::wstring_view name, std::uint64_t& charactersRead) const;

    std::wstring text_;  ///< in lower case
    bool wild_ = false;
    mutable std::wstring folded_;  ///< the name last looked at; kept for its memory
};

}  // namespace tovar
