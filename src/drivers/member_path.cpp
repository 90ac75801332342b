#include "drivers/member_path.h"

#include <algorithm>

#include "shell/paths.h"

namespace tovar {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";
constexpr std::size_t kLongestPart = 255;

/// Source: Microsoft documentation, "Naming Files, Paths, and Namespaces"
bool isDeviceName(std::wstring_view part) {
    std::wstring stem = upperCase(part.substr(0, part.find(L'.')));
    stem.erase(stem.find_last_not_of(L' ') + 1);  // "NUL .txt" is the device too
    static constexpr std::wstring_view kDevices[] = {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$", L"CLOCK$"};
    if (std::ranges::find(kDevices, stem) != std::end(kDevices)) return true;
    const bool isPort = stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT"));
    return isPort && std::wstring_view(L"0123456789\xB9\xB2\xB3").find(stem[3]) != std::wstring_view::npos;
}

bool isSafePart(std::wstring_view part) {
    if (part.empty() || part.size() > kLongestPart || part.back() == L'.' || part.back() == L' ') return false;
    const auto isForbidden = [](wchar_t character) {
        return character < 0x20 || character == 0x7F ||
               std::wstring_view(L"<>:\"|?*").find(character) != std::wstring_view::npos;
    };
    return std::ranges::none_of(part, isForbidden) && !isDeviceName(part);
}

}  // namespace

std::optional<std::wstring> safeMemberPath(std::wstring_view storedName, bool keepFolders, wchar_t separator) {
    std::wstring path;
    for (std::size_t start = 0; start <= storedName.size();) {
        const std::size_t end = std::min(storedName.find_first_of(kSeparators, start), storedName.size());
        const std::wstring_view part = storedName.substr(start, end - start);
        const bool last = end == storedName.size();
        if (keepFolders || last) {
            if (!isSafePart(part)) return std::nullopt;
            if (!path.empty()) path += separator;
            path += part;
        }
        start = end + 1;
    }
    return path;
}

}  // namespace tovar
