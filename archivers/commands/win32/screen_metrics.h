#pragma once
#include <windows.h>

#include "archivers/commands/win32/handles.h"

namespace archiver {

/// Dots per inch at which the window is drawn, by the awareness of its process; 96 is 100 %.
int dpiOf(HWND window) noexcept;

/// The font that the user has for messages, at that resolution.
/// @param bold  for headings
/// @return null when the system has none: controls then keep its oldest font
UniqueFont messageFont(int dpi, bool bold) noexcept;

/// One of the system's icons, such as IDI_QUESTION, at that resolution.
UniqueIcon systemIcon(const wchar_t* name, int dpi) noexcept;

/// The part of the window's monitor that no task bar covers.
/// @param window  null: of the first monitor
RECT workAreaOf(HWND window) noexcept;

/// Lengths that follow the font: a quarter of its mean width, an eighth of its height.
struct DialogUnits {
    int width = 1;   ///< pixels of four horizontal units
    int height = 1;  ///< pixels of eight vertical ones

    [[nodiscard]] int x(int units) const noexcept { return ::MulDiv(units, width, 4); }
    [[nodiscard]] int y(int units) const noexcept { return ::MulDiv(units, height, 8); }
};
DialogUnits unitsOf(HFONT font) noexcept;

}  // namespace archiver
