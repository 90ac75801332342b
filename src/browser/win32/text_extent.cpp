#include "browser/win32/text_extent.h"

namespace tovar {

TextExtent::TextExtent(HWND window) : window_(window), device_(::GetDC(window)) {
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
    former_ = ::SelectObject(device_, font != nullptr ? font : ::GetStockObject(SYSTEM_FONT));
}

TextExtent::~TextExtent() {
    ::SelectObject(device_, former_);
    ::ReleaseDC(window_, device_);
}

int TextExtent::widthOf(std::wstring_view text) const noexcept {
    SIZE size{};
    ::GetTextExtentPoint32W(device_, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

int TextExtent::height() const noexcept {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(device_, &metrics);
    return metrics.tmHeight;
}

}  // namespace tovar
