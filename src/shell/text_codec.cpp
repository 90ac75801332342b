#include "shell/text_codec.h"

#include <algorithm>
#include <cstdint>

namespace tovar {
namespace {

constexpr wchar_t kReplacement = L'\uFFFD';
constexpr char32_t kNoCharacter = 0xFFFFFFFF;
constexpr bool kUtf16 = sizeof(wchar_t) == 2;

bool isSurrogate(char32_t code) noexcept { return code >= 0xD800 && code <= 0xDFFF; }

// Takes one character off the front; kNoCharacter for a surrogate alone and a value beyond Unicode.
char32_t takeWide(std::wstring_view& text) noexcept {
    const auto first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if constexpr (kUtf16) {
        if (first >= 0xD800 && first <= 0xDBFF && !text.empty()) {
            const auto second = static_cast<char32_t>(text.front());
            if (second >= 0xDC00 && second <= 0xDFFF) {
                text.remove_prefix(1);
                return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
            }
        }
    }
    return isSurrogate(first) || first > 0x10FFFF ? kNoCharacter : first;
}

void appendUtf8(char32_t code, std::string& bytes) {
    const auto append = [&bytes](char32_t value) { bytes += static_cast<char>(static_cast<unsigned char>(value)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xC0 | (code >> 6));
        append(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        append(0xE0 | (code >> 12));
        append(0x80 | ((code >> 6) & 0x3F));
        append(0x80 | (code & 0x3F));
    } else {
        append(0xF0 | (code >> 18));
        append(0x80 | ((code >> 12) & 0x3F));
        append(0x80 | ((code >> 6) & 0x3F));
        append(0x80 | (code & 0x3F));
    }
}

void appendWide(char32_t code, std::wstring& text) {
    if (kUtf16 && code > 0xFFFF) {
        text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
        text += static_cast<wchar_t>(code);
    }
}

// What may follow a first byte: how many bytes, and the range of the next one (table 3-7 of the Unicode Standard).
struct Sequence {
    int following = 0;
    std::uint8_t lowest = 0x80, highest = 0xBF;
};

Sequence sequenceOf(std::uint8_t first) noexcept {
    if (first >= 0xC2 && first <= 0xDF) return {1};
    if (first == 0xE0) return {2, 0xA0, 0xBF};
    if (first == 0xED) return {2, 0x80, 0x9F};
    if (first >= 0xE1 && first <= 0xEF) return {2};
    if (first == 0xF0) return {3, 0x90, 0xBF};
    if (first >= 0xF1 && first <= 0xF3) return {3};
    if (first == 0xF4) return {3, 0x80, 0x8F};
    return {};
}

// Takes one character off the front, or the bytes that only began one: each such piece is one kNoCharacter.
char32_t takeUtf8(std::string_view& bytes) noexcept {
    const auto first = static_cast<std::uint8_t>(bytes.front());
    bytes.remove_prefix(1);
    if (first < 0x80) return first;
    Sequence sequence = sequenceOf(first);
    if (sequence.following == 0) return kNoCharacter;
    char32_t code = first & (0x3F >> sequence.following);
    while (sequence.following > 0) {
        if (bytes.empty()) return kNoCharacter;
        const auto next = static_cast<std::uint8_t>(bytes.front());
        if (next < sequence.lowest || next > sequence.highest) return kNoCharacter;
        bytes.remove_prefix(1);
        code = (code << 6) | (next & 0x3F);
        sequence = {sequence.following - 1};
    }
    return code;
}

// Most texts are ASCII, mostly in long runs: moves the run at the front over as a whole.
template <class From, class To>
void takeAscii(std::basic_string_view<From>& from, std::basic_string<To>& to) {
    const auto end = std::ranges::find_if(from, [](From each) { return each < 0 || each > 0x7F; });
    const auto length = static_cast<std::size_t>(end - from.begin());
    const std::size_t start = to.size();
    to.resize(start + length);
    std::transform(from.begin(), end, to.begin() + static_cast<std::ptrdiff_t>(start),
                   [](From each) { return static_cast<To>(each); });
    from.remove_prefix(length);
}

}  // namespace

std::optional<std::string> Utf8Codec::encode(std::wstring_view text) const {
    std::string bytes;
    for (takeAscii(text, bytes); !text.empty(); takeAscii(text, bytes)) {
        const char32_t code = takeWide(text);
        if (code == kNoCharacter) return std::nullopt;
        appendUtf8(code, bytes);
    }
    return bytes;
}

void Utf8Codec::decodeTo(std::string_view bytes, std::wstring& text) const {
    for (takeAscii(bytes, text); !bytes.empty(); takeAscii(bytes, text)) {
        const char32_t code = takeUtf8(bytes);
        if (code == kNoCharacter) {
            text += kReplacement;
        } else {
            appendWide(code, text);
        }
    }
}

}  // namespace tovar
