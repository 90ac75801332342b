#pragma once
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

namespace tovar {

/// A text to look at, which lies in memory either as wide characters or, when it has none above U+00FF, in 8 bits each:
/// names of most languages take half the room then, and none loses anything, not even half of a pair.
class CompactText {
public:
    constexpr CompactText() = default;

    /// A wide text, such as a std::wstring or std::wstring_view.
    template <class Text>
    requires std::convertible_to<const Text&, std::wstring_view>
    constexpr CompactText(const Text& text) : CompactText(std::wstring_view(text).data(), std::wstring_view(text)) {}

    /// @param characters  in 8 bits each, U+0000 to U+00FF
    constexpr CompactText(const unsigned char* characters, std::size_t size) : plain_(characters), size_(size) {}

    /// @return whether a text can lie in 8 bits a character
    [[nodiscard]] static constexpr bool fitsPlain(std::wstring_view text) noexcept {
        for (const wchar_t character : text) {
            if (static_cast<std::char_traits<wchar_t>::int_type>(character) > kLastPlain) return false;
        }
        return true;
    }

    [[nodiscard]] constexpr std::size_t size() const noexcept { return size_; }
    [[nodiscard]] constexpr bool empty() const noexcept { return size_ == 0; }
    /// @return whether no character is above U+00FF for sure
    [[nodiscard]] constexpr bool isPlain() const noexcept { return wide_ == nullptr; }
    /// @param place  below size()
    [[nodiscard]] constexpr wchar_t operator[](std::size_t place) const noexcept {
        return wide_ != nullptr ? wide_[place] : static_cast<wchar_t>(plain_[place]);
    }

    /// The characters of a text that is not plain.
    [[nodiscard]] constexpr std::wstring_view wide() const noexcept { return {wide_, wide_ == nullptr ? 0 : size_}; }

    /// @param text  is replaced; keeps its memory
    void copyTo(std::wstring& text) const {
        if (wide_ != nullptr) {
            text.assign(wide_, size_);
        } else {
            text.assign(plain_, plain_ + size_);
        }
    }
    [[nodiscard]] explicit operator std::wstring() const {
        std::wstring text;
        copyTo(text);
        return text;
    }

    [[nodiscard]] friend constexpr bool operator==(const CompactText& left, const CompactText& right) noexcept {
        if (left.size_ != right.size_) return false;
        for (std::size_t place = 0; place < left.size_; ++place) {
            if (left[place] != right[place]) return false;
        }
        return true;
    }

private:
    static constexpr unsigned kLastPlain = 0xFF;

    constexpr CompactText(const wchar_t* characters, std::wstring_view text) : wide_(characters), size_(text.size()) {}

    const wchar_t* wide_ = nullptr;  ///< null for a plain text
    const unsigned char* plain_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace tovar
