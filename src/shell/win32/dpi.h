#pragma once
#include <windows.h>

namespace tovar {

/// @return dots per inch at which the window is shown; 96 is the size that layouts are written in
[[nodiscard]] int dpiOf(HWND window) noexcept;

/// @param length  at 96 dots per inch
[[nodiscard]] int scaled(int length, int dpi) noexcept;

/// @return the font of the desktop's messages at that many dots per inch; the caller owns it; null on failure
[[nodiscard]] HFONT createMessageFont(int dpi) noexcept;

/// @return whether two fonts look the same; no font is like none
[[nodiscard]] bool isSameFont(HFONT one, HFONT other) noexcept;

}  // namespace tovar
