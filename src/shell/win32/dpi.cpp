#include "shell/win32/dpi.h"

namespace tovar {
namespace {

/// A function of user32 that older systems lack.
template <class Function>
Function* newerFunction(const char* name) noexcept {
    const auto address = ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

int screenDpi() noexcept {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

}  // namespace

int dpiOf(HWND window) noexcept {
    if (const auto dpiForWindow = newerFunction<UINT WINAPI(HWND)>("GetDpiForWindow")) {
        const UINT dpi = dpiForWindow(window);
        if (dpi != 0) return static_cast<int>(dpi);
    }
    return screenDpi();
}

int scaled(int length, int dpi) noexcept { return ::MulDiv(length, dpi, USER_DEFAULT_SCREEN_DPI); }

HFONT createMessageFont(int dpi) noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    const auto parametersForDpi =
        newerFunction<BOOL WINAPI(UINT, UINT, void*, UINT, UINT)>("SystemParametersInfoForDpi");
    if (parametersForDpi == nullptr ||
        !parametersForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi))) {
        if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return nullptr;
        metrics.lfMessageFont.lfHeight = ::MulDiv(metrics.lfMessageFont.lfHeight, dpi, screenDpi());
    }
    return ::CreateFontIndirectW(&metrics.lfMessageFont);
}

bool isSameFont(HFONT one, HFONT other) noexcept {
    LOGFONTW first{}, second{};
    return ::GetObjectW(one, sizeof first, &first) != 0 && ::GetObjectW(other, sizeof second, &second) != 0 &&
           first.lfHeight == second.lfHeight && first.lfWeight == second.lfWeight &&
           first.lfItalic == second.lfItalic && first.lfCharSet == second.lfCharSet &&
           ::lstrcmpiW(first.lfFaceName, second.lfFaceName) == 0;
}

}  // namespace tovar
