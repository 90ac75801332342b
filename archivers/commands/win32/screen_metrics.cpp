#include "archivers/commands/win32/screen_metrics.h"

namespace archiver {
namespace {

/// A function of user32 that older systems lack.
template <class Function>
Function* newerFunction(const char* name) noexcept {
    const auto address = ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

/// What GetSystemMetrics and SystemParametersInfo go by.
int systemDpi() noexcept {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

}  // namespace

int dpiOf(HWND window) noexcept {
    static const auto dpiForWindow = newerFunction<UINT WINAPI(HWND)>("GetDpiForWindow");
    const UINT dpi = dpiForWindow != nullptr ? dpiForWindow(window) : 0;
    return dpi != 0 ? static_cast<int>(dpi) : systemDpi();
}

UniqueFont messageFont(int dpi, bool bold) noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return nullptr;
    metrics.lfMessageFont.lfHeight = ::MulDiv(metrics.lfMessageFont.lfHeight, dpi, systemDpi());
    if (bold) metrics.lfMessageFont.lfWeight = FW_BOLD;
    return UniqueFont(::CreateFontIndirectW(&metrics.lfMessageFont));
}

UniqueIcon systemIcon(const wchar_t* name, int dpi) noexcept {
    const int size = ::MulDiv(32, dpi, USER_DEFAULT_SCREEN_DPI);
    return UniqueIcon(static_cast<HICON>(::LoadImageW(nullptr, name, IMAGE_ICON, size, size, 0)));
}

RECT workAreaOf(HWND window) noexcept {
    const HMONITOR monitor = window != nullptr ? ::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST)
                                               : ::MonitorFromPoint({}, MONITOR_DEFAULTTOPRIMARY);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (::GetMonitorInfoW(monitor, &info)) return info.rcWork;
    return {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

DialogUnits unitsOf(HFONT font) noexcept {
    static constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    DialogUnits units{6, 13};
    const HDC screen = ::GetDC(nullptr);
    if (screen == nullptr) return units;
    const HGDIOBJ before = font != nullptr ? ::SelectObject(screen, font) : nullptr;
    SIZE size;
    if (::GetTextExtentPoint32W(screen, kLetters, 52, &size) && size.cx >= 52 && size.cy > 0) {
        units.width = static_cast<int>((size.cx + 26) / 52);
        units.height = static_cast<int>(size.cy);
    }
    if (before != nullptr) ::SelectObject(screen, before);
    ::ReleaseDC(nullptr, screen);
    return units;
}

}  // namespace archiver
