#include "settings/registry_text.h"

namespace tovar {
namespace {

constexpr bool kUtf16 = sizeof(wchar_t) == 2;

void appendUnit(char32_t unit, std::vector<std::uint8_t>& bytes) {
    bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
}

bool isHighSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

std::vector<std::uint8_t> toRegistryText(std::wstring_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(2 * text.size() + 2);
    for (const wchar_t each : text) {
        const auto code = static_cast<char32_t>(each);
        if (kUtf16 || code < 0x10000) {
            appendUnit(code & 0xFFFF, bytes);
        } else {
            appendUnit(0xD800 + (((code - 0x10000) >> 10) & 0x3FF), bytes);
            appendUnit(0xDC00 + ((code - 0x10000) & 0x3FF), bytes);
        }
    }
    appendUnit(0, bytes);
    return bytes;
}

std::wstring fromRegistryText(std::span<const std::uint8_t> bytes) {
    std::wstring text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const char32_t unit = bytes[at] | (static_cast<char32_t>(bytes[at + 1]) << 8);
        if (!kUtf16 && isLowSurrogate(unit) && !text.empty() && isHighSurrogate(static_cast<char32_t>(text.back()))) {
            const auto high = static_cast<char32_t>(text.back());
            text.back() = static_cast<wchar_t>(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
        } else {
            text += static_cast<wchar_t>(unit);
        }
    }
    if (text.ends_with(L'\0')) text.pop_back();
    return text;
}

}  // namespace tovar
