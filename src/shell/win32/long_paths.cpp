#include "shell/win32/long_paths.h"

#include <windows.h>

#include "shell/paths.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

constexpr std::wstring_view kExtended = LR"(\\?\)", kExtendedShare = LR"(\\?\UNC\)";

std::wstring withoutExtension(std::wstring path) {
    if (path.starts_with(kExtendedShare)) return LR"(\\)" + path.substr(kExtendedShare.size());
    if (path.starts_with(kExtended) && HasDriveRoot(std::wstring_view(path).substr(kExtended.size()))) {
        return path.substr(kExtended.size());
    }
    return path;
}

}  // namespace

std::wstring extendedPath(const std::wstring& path) {
    if (path.starts_with(kExtended)) return path;
    if (IsUncPath(path)) return std::wstring(kExtendedShare) + path.substr(2);
    return HasDriveRoot(path) ? std::wstring(kExtended) + path : path;
}

std::wstring plainPath(const std::wstring& path) {
    if (!isSystemText(path)) return {};
    const QuietSystem quiet;
    std::wstring whole = withoutExtension(textOfSystem(
        [&](wchar_t* buffer, DWORD size) { return ::GetFullPathNameW(path.c_str(), size, buffer, nullptr); }));
    // Only where there is a short name: the way is looked at name by name, which takes its time on a network.
    if (whole.find(L'~') != whole.npos) {
        const std::wstring asked = whole.size() < MAX_PATH ? whole : extendedPath(whole);
        std::wstring named =
            textOfSystem([&](wchar_t* buffer, DWORD size) { return ::GetLongPathNameW(asked.c_str(), buffer, size); });
        if (!named.empty()) whole = withoutExtension(std::move(named));
    }
    return StripTrailingSeparator(whole);
}

}  // namespace tovar
