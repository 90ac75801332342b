#include "archivers/formats/legacy_text.h"

#include <windows.h>

#include <climits>

#include "archivers/formats/utf8.h"

namespace archiver {
namespace {

UINT codePageOf(LegacyPage page) noexcept {
    const UINT current = page == LegacyPage::kOem ? ::GetOEMCP() : ::GetACP();
    if (current != CP_UTF8) return current;
    return page == LegacyPage::kOem ? 437 : 1252;
}

}  // namespace

void appendLegacyText(std::string_view bytes, LegacyPage page, std::string& utf8) {
    if (bytes.empty() || bytes.size() > INT_MAX) return;
    // One wide unit a byte at most: a code page that needs more for a byte does not exist.
    std::wstring wide(bytes.size(), L'\0');
    const int units = ::MultiByteToWideChar(codePageOf(page), 0, bytes.data(), static_cast<int>(bytes.size()),
                                            wide.data(), static_cast<int>(wide.size()));
    if (units > 0) {
        appendUtf8(std::wstring_view(wide).substr(0, static_cast<std::size_t>(units)), utf8);
        return;
    }
    // The system has no table for its own code page: each byte stands for itself.
    for (const char byte : bytes) appendUtf8(static_cast<char32_t>(static_cast<unsigned char>(byte)), utf8);
}

bool appendLegacyBytes(std::string_view utf8, LegacyPage page, std::string& bytes) {
    if (utf8.empty()) return true;
    if (utf8.size() > INT_MAX / 2) return false;
    const auto size = static_cast<int>(utf8.size());
    std::wstring wide(utf8.size(), L'\0');
    const int units = ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), size, wide.data(), size);
    if (units <= 0) return false;
    std::string result(static_cast<std::size_t>(units) * 2, '\0');  // no such code page takes more for a unit
    BOOL inexact = FALSE;
    const int length = ::WideCharToMultiByte(codePageOf(page), WC_NO_BEST_FIT_CHARS, wide.data(), units, result.data(),
                                             static_cast<int>(result.size()), nullptr, &inexact);
    if (length <= 0 || inexact != FALSE) return false;
    bytes.append(result, 0, static_cast<std::size_t>(length));
    return true;
}

}  // namespace archiver
