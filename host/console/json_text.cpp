#include "host/console/json_text.h"

#include <algorithm>
#include <cstdio>

#include "shell/text_codec.h"

namespace tovar::host {
namespace {

bool isHigh(wchar_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLow(wchar_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

/// The text with U+FFFD in place of each half of a surrogate pair that stands alone.
std::wstring withoutLoneHalves(std::wstring_view text) {
    std::wstring whole;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (sizeof(wchar_t) == 2 && isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1])) {
            whole.append(text.substr(i++, 2));
        } else {
            whole += isHigh(text[i]) || isLow(text[i]) ? L'\xFFFD' : text[i];
        }
    }
    return whole;
}

}  // namespace

void appendUtf8(std::string& out, std::wstring_view text) {
    const Utf8Codec codec;
    auto bytes = codec.encode(text);
    if (!bytes) bytes = codec.encode(withoutLoneHalves(text));
    if (bytes) out += *bytes;
}

void appendPrintable(std::string& out, std::wstring_view text) {
    const auto isControl = [](wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); };
    if (std::none_of(text.begin(), text.end(), isControl)) return appendUtf8(out, text);
    std::wstring printable(text);
    std::replace_if(printable.begin(), printable.end(), isControl, L'?');
    appendUtf8(out, printable);
}

void appendJson(std::string& out, std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size());
    for (const wchar_t c : text) {
        if (c == L'"' || c == L'\\') {
            escaped += L'\\';
            escaped += c;
        } else if (c < 0x20 || c == 0x7F) {
            wchar_t escape[8];
            std::swprintf(escape, 8, L"\\u%04x", static_cast<unsigned>(c));
            escaped += escape;
        } else {
            escaped += c;
        }
    }
    out += '"';
    appendUtf8(out, escaped);
    out += '"';
}

}  // namespace tovar::host
