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

std::wstring systemPath(const std::wstring& path) {
    constexpr std::size_t kShort = MAX_PATH - 12;  // so that a folder still has room for a short name
    if (path.size() < kShort || path.starts_with(kExtended)) return path;
    const std::wstring whole = textOfSystem(
        [&](wchar_t* buffer, DWORD size) { return ::GetFullPathNameW(path.c_str(), size, buffer, nullptr); });
    // Longer ones the system has no words for at all: it says so when it gets the path as it is.
    constexpr std::size_t kLongest = 32767 - kExtendedShare.size();
    return whole.empty() || whole.size() > kLongest ? path : extendedPath(whole);
}

bool isSlowPlace(const std::wstring& path) {
    if (!HasDriveRoot(path)) return true;
    const UINT kind = ::GetDriveTypeW(path.substr(0, 3).c_str());
    return kind != DRIVE_FIXED && kind != DRIVE_RAMDISK;
}

std::wstring plainPath(const std::wstring& path) {
    if (!isSystemText(path)) return {};
    const QuietSystem quiet;
    std::wstring whole = withoutExtension(textOfSystem(
        [&](wchar_t* buffer, DWORD size) { return ::GetFullPathNameW(path.c_str(), size, buffer, nullptr); }));
    // Only where there is a short name: the way is looked at name by name, which a network may keep the caller waiting
    // for.
    if (whole.find(L'~') != whole.npos && !isSlowPlace(whole)) {
        const std::wstring asked = whole.size() < MAX_PATH ? whole : extendedPath(whole);
        std::wstring named =
            textOfSystem([&](wchar_t* buffer, DWORD size) { return ::GetLongPathNameW(asked.c_str(), buffer, size); });
        if (!named.empty()) whole = withoutExtension(std::move(named));
    }
    return StripTrailingSeparator(whole);
}

}  // namespace tovar
