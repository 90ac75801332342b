#include "shell/letter_case.h"

#include <windows.h>

namespace tovar {
namespace {

std::wstring mapped(std::wstring_view text, DWORD mapping) {
    std::wstring result(text);
    const int length = static_cast<int>(text.size());
    // Answers 0 and writes nothing for an empty text.
    ::LCMapStringEx(LOCALE_NAME_INVARIANT, mapping, text.data(), length, result.data(), length, nullptr, nullptr, 0);
    return result;
}

}  // namespace

std::wstring foldCase(std::wstring_view text) { return mapped(text, LCMAP_LOWERCASE); }

std::wstring raiseCase(std::wstring_view text) { return mapped(text, LCMAP_UPPERCASE); }

}  // namespace tovar
