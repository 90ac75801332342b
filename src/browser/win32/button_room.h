#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <string>

#include "browser/win32/text_extent.h"
#include "shell/win32/dpi.h"

namespace tovar {

/// Makes a toolbar's buttons as large as their texts and pictures want at a scale. By itself a toolbar keeps the few
/// pixels around them whatever the scale is. To be called when the toolbar has its font, and again for every other.
/// @param pictureSize  pixels; 0 for buttons without pictures
/// @param dpi          dots per inch
inline void giveButtonsRoom(HWND toolbar, int pictureSize, int dpi) {
    constexpr int kBeside = 7, kAbove = 3, kBehindPicture = 4;  // at 96 dots per inch
    const TextExtent extent(toolbar);
    const auto count = static_cast<int>(::SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0));
    for (int place = 0; place < count; ++place) {
        std::array<wchar_t, 64> written{};
        TBBUTTONINFOW button{};
        button.cbSize = sizeof button;
        button.dwMask = TBIF_BYINDEX | TBIF_TEXT;
        button.pszText = written.data();
        button.cchText = static_cast<int>(written.size());
        ::SendMessageW(toolbar, TB_GETBUTTONINFOW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&button));
        std::wstring text(written.data());
        std::erase(text, L'&');
        const int picture = pictureSize == 0 ? 0 : pictureSize + scaled(kBehindPicture, dpi);
        button.dwMask = TBIF_BYINDEX | TBIF_SIZE;
        button.cx = static_cast<WORD>(extent.widthOf(text) + picture + 2 * scaled(kBeside, dpi));
        ::SendMessageW(toolbar, TB_SETBUTTONINFOW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&button));
    }
    const int height = std::max(extent.height(), pictureSize) + 2 * scaled(kAbove, dpi);
    ::SendMessageW(toolbar, TB_SETBUTTONSIZE, 0, MAKELPARAM(height, height));
}

}  // namespace tovar
