#pragma once
#include <windows.h>

#include <map>
#include <string_view>

#include "shell/win32/handles.h"

namespace tovar {

/// The fonts that ApplyFont made for a form; kept until the form's window is gone.
class FormFonts {
public:
    /// @return a font like the given one but of that face; null when none can be made
    HFONT withFace(HFONT font, std::wstring_view fontName);

private:
    std::map<HFONT, UniqueFont> fonts_;  ///< by the font they stand for
};

/// Gives all controls of a form the font that the host wants, in the sizes that they have. Controls without a font of
/// their own keep what they have. Pending messages run meanwhile, so the form may be gone afterwards.
/// @param form      null: nothing happens
/// @param fontName  face name; empty: nothing happens
void ApplyFont(HWND form, std::wstring_view fontName, FormFonts& fonts);

/// The same for a form that is open already and has got other fonts: no messages run.
void ApplyFontQuietly(HWND form, std::wstring_view fontName, FormFonts& fonts);

}  // namespace tovar
