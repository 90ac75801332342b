#include "shell/win32/form_fonts.h"

#include <vector>

#include "shell/win32/pending_messages.h"

namespace tovar {
namespace {

std::vector<HWND> controlsOf(HWND form) {
    std::vector<HWND> controls;
    for (HWND control = nullptr; (control = ::FindWindowExW(form, control, nullptr, nullptr)) != nullptr;) {
        controls.push_back(control);
        const auto inside = controlsOf(control);
        controls.insert(controls.end(), inside.begin(), inside.end());
    }
    return controls;
}

/// @return whether the control has got another font
bool giveFont(HWND control, std::wstring_view fontName, FormFonts& fonts) {
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
    if (font == nullptr) return false;
    const HFONT replacement = fonts.withFace(font, fontName);
    if (replacement == nullptr) return false;
    ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(replacement), FALSE);
    return true;
}

void applyTo(HWND control, std::wstring_view fontName, FormFonts& fonts) {
    if (!giveFont(control, fontName, fonts)) return;
    RECT area;
    if (::GetWindowRect(control, &area)) {
        ::MapWindowPoints(HWND_DESKTOP, control, reinterpret_cast<POINT*>(&area), 2);
        ::InvalidateRect(control, &area, FALSE);
    }
    runPendingMessages();
    ::UpdateWindow(control);
}

}  // namespace

HFONT FormFonts::withFace(HFONT font, std::wstring_view fontName) {
    for (const auto& [original, made] : fonts_) {
        if (made.get() == font) return font;
    }
    if (const auto known = fonts_.find(font); known != fonts_.end()) return known->second.get();
    LOGFONTW description{};
    if (::GetObjectW(font, sizeof description, &description) == 0) return nullptr;
    if (description.lfFaceName[0] == 0 || description.lfHeight == 0) return nullptr;
    if (fontName.size() >= std::size(description.lfFaceName)) return nullptr;  // no face has such a name
    description.lfFaceName[fontName.copy(description.lfFaceName, fontName.size())] = 0;
    UniqueFont made(::CreateFontIndirectW(&description));
    return fonts_.emplace(font, std::move(made)).first->second.get();
}

void ApplyFont(HWND form, std::wstring_view fontName, FormFonts& fonts) {
    if (form == nullptr || fontName.empty()) return;
    for (const HWND control : controlsOf(form)) {
        if (!::IsWindow(form)) return;
        if (::IsWindow(control)) applyTo(control, fontName, fonts);
    }
}

void ApplyFontQuietly(HWND form, std::wstring_view fontName, FormFonts& fonts) {
    if (form == nullptr || fontName.empty()) return;
    for (const HWND control : controlsOf(form)) {
        if (giveFont(control, fontName, fonts)) ::InvalidateRect(control, nullptr, FALSE);
    }
}

}  // namespace tovar
