#include "shell/win32/dpi.h"

namespace tovar {
namespace {

/// A function of user32 that older systems lack.
template <class Function>
Function* newerFunction(const char* name) noexcept {
    const auto address = ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

}  // namespace

int dpiOf(HWND window) noexcept {
    if (const auto dpiForWindow = newerFunction<UINT WINAPI(HWND)>("GetDpiForWindow")) {
        const UINT dpi = dpiForWindow(window);
        if (dpi != 0) return static_cast<int>(dpi);
    }
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

int scaled(int length, int dpi) noexcept { return ::MulDiv(length, dpi, USER_DEFAULT_SCREEN_DPI); }

HFONT createMessageFont(HWND window) noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    const auto parametersForDpi =
        newerFunction<BOOL WINAPI(UINT, UINT, void*, UINT, UINT)>("SystemParametersInfoForDpi");
    const auto dpi = static_cast<UINT>(dpiOf(window));
    if (parametersForDpi == nullptr || !parametersForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) {
        if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return nullptr;
    }
    return ::CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace tovar
