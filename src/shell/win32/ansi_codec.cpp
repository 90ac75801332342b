#include "shell/win32/ansi_codec.h"

#include <climits>
#include <stdexcept>

namespace tovar {
namespace {

constexpr wchar_t kReplacement = L'\uFFFD';

// The system counts characters and bytes in int.
template <class Text>
int lengthOf(const Text& text) {
    if (text.size() > INT_MAX) throw std::length_error("a text too long for the system");
    return static_cast<int>(text.size());
}

}  // namespace

// UTF-8 goes its own way in both directions: Windows takes none of the flags for it, and older versions of it let
// malformed texts pass.

std::optional<std::string> AnsiCodec::encode(std::wstring_view text) const {
    if (codePage_ == CP_UTF8) return Utf8Codec().encode(text);
    std::string bytes;
    if (text.empty()) return bytes;
    const int length = lengthOf(text);
    // A character of UTF-16 has two bytes at most in any code page that a process can have.
    bytes.resize(2 * text.size());
    BOOL replaced = FALSE;
    const int written = ::WideCharToMultiByte(codePage_, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(),
                                              lengthOf(bytes), nullptr, &replaced);
    if (written <= 0 || replaced != FALSE) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(written));
    return bytes;
}

void AnsiCodec::decodeTo(std::string_view bytes, std::wstring& text) const {
    if (codePage_ == CP_UTF8) return Utf8Codec().decodeTo(bytes, text);
    if (bytes.empty()) return;
    const int length = lengthOf(bytes);
    const std::size_t start = text.size();
    text.resize(start + bytes.size());
    const int written =
        ::MultiByteToWideChar(codePage_, MB_ERR_INVALID_CHARS, bytes.data(), length, text.data() + start, length);
    text.resize(start + static_cast<std::size_t>(written > 0 ? written : 0));
    if (written <= 0) decodeDamaged(bytes, text);
}

// Character by character, so that one bad byte costs no more than itself.
void AnsiCodec::decodeDamaged(std::string_view bytes, std::wstring& text) const {
    while (!bytes.empty()) {
        const bool leads = ::IsDBCSLeadByteEx(codePage_, static_cast<BYTE>(bytes.front())) != FALSE;
        std::size_t length = leads && bytes.size() > 1 ? 2 : 1;
        wchar_t wide[2] = {};
        int written =
            ::MultiByteToWideChar(codePage_, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(length), wide, 2);
        if (written <= 0) {
            // The byte behind a bad lead byte is a character of its own: it can be the end of a folder's name.
            length = 1;
            wide[0] = kReplacement;
            written = 1;
        }
        text.append(wide, static_cast<std::size_t>(written));
        bytes.remove_prefix(length);
    }
}

}  // namespace tovar
