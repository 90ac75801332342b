#include "shell/paths.h"

#include <algorithm>

namespace tovar {
namespace {

constexpr wchar_t kBlank = L' ';
constexpr wchar_t kQuote = L'"';

// NUL where the path has no separator.
wchar_t ownSeparator(std::wstring_view path) noexcept {
    if (path.find(L'\\') != path.npos) return L'\\';
    if (path.find(L'/') != path.npos) return L'/';
    return L'\0';
}

// Where the file-name part begins; npos where there is no separator to begin behind.
std::size_t fileNameStart(std::wstring_view path) noexcept {
    const wchar_t separator = ownSeparator(path);
    return separator == L'\0' ? path.npos : path.rfind(separator) + 1;
}

std::wstring_view withoutTrailingSeparator(std::wstring_view path) noexcept {
    const bool root = path == LR"(\\)" || (path.size() == 3 && HasDriveRoot(path));
    if (root || path.empty() || path.back() != ownSeparator(path)) return path;
    return path.substr(0, path.size() - 1);
}

std::wstring_view fileName(std::wstring_view path) noexcept {
    const std::size_t start = fileNameStart(path);
    return start == path.npos ? path : path.substr(start);
}

}  // namespace

bool HasDriveRoot(std::wstring_view path) noexcept { return path.size() >= 3 && path.substr(1, 2) == LR"(:\)"; }

bool IsUncPath(std::wstring_view path) noexcept { return path.starts_with(LR"(\\)"); }

std::wstring StripTrailingSeparator(std::wstring_view path) { return std::wstring(withoutTrailingSeparator(path)); }

std::wstring AddTrailingSeparator(std::wstring_view path) {
    std::wstring result(path);
    const wchar_t separator = ownSeparator(path);
    if (separator != L'\0' && path.back() != separator) result += separator;
    return result;
}

std::wstring ParentPath(std::wstring_view path) { return std::wstring(path.substr(0, fileNameStart(path))); }

std::wstring FileNamePart(std::wstring_view path) { return std::wstring(fileName(path)); }

std::wstring BaseName(std::wstring_view path) {
    const std::wstring_view name = fileName(path);
    return std::wstring(name.substr(0, name.rfind(L'.')));
}

std::wstring ExtensionPart(std::wstring_view path) {
    const std::wstring_view whole = withoutTrailingSeparator(path);
    const std::size_t dot = whole.rfind(L'.');
    return dot == whole.npos ? std::wstring() : std::wstring(whole.substr(dot + 1));
}

std::wstring CutAtNull(std::wstring_view text) { return std::wstring(text.substr(0, text.find(L'\0'))); }

std::wstring QuoteIfNeeded(std::wstring_view text) {
    std::wstring result(text);
    if (text.find_first_of(L" ,") == text.npos || text.front() == kQuote || text.back() == kQuote) return result;
    result.insert(result.begin(), kQuote);
    result += kQuote;
    return result;
}

std::wstring SingleQuote(std::wstring_view text) {
    std::wstring result = L"'";
    result += text;
    result += L'\'';
    return result;
}

std::wstring_view trimBlanks(std::wstring_view text) noexcept {
    const std::size_t first = text.find_first_not_of(kBlank);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::wstring upperCase(std::wstring_view text) {
    std::wstring result(text);
    std::ranges::transform(result, result.begin(), [](wchar_t each) {
        return each >= L'a' && each <= L'z' ? static_cast<wchar_t>(each - L'a' + L'A') : each;
    });
    return result;
}

}  // namespace tovar
