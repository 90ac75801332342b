#pragma once
#include <windows.h>

#include <string_view>

namespace tovar {

/// Measures texts in the font that a window has.
class TextExtent {
public:
    explicit TextExtent(HWND window);
    ~TextExtent();
    TextExtent(const TextExtent&) = delete;
    TextExtent& operator=(const TextExtent&) = delete;

    /// @return pixels
    [[nodiscard]] int widthOf(std::wstring_view text) const noexcept;
    /// @return of a line of text, in pixels
    [[nodiscard]] int height() const noexcept;

private:
    HWND window_;
    HDC device_;
    HGDIOBJ former_;
};

}  // namespace tovar
