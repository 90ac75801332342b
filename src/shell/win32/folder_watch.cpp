#include "shell/win32/folder_watch.h"

#include <array>
#include <string_view>
#include <utility>

#include "shell/paths.h"
#include "shell/win32/folder_search.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

constexpr std::uint64_t kMoment = 1'000'000;  // a tenth of a second: no clock of a file system ticks more slowly here

std::uint64_t joined(const FILETIME& time) noexcept {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

/// @return whether a folder's time tells when something in it has changed, and is told at once
bool hasUsefulTime(const std::wstring& path) {
    if (isSlowPlace(path)) return false;
    std::array<wchar_t, MAX_PATH + 1> system{};
    const std::wstring root = path.substr(0, 3);
    if (::GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, nullptr, system.data(),
                                static_cast<DWORD>(system.size())) == FALSE) {
        return false;
    }
    return std::wstring_view(system.data()).find(L"FAT") == std::wstring_view::npos;
}

}  // namespace

std::optional<FolderWatch::Watched> FolderWatch::begin(const std::wstring& path) {
    const QuietSystem quiet;
    Watched folder;
    folder.path = extendedPath(path);
    if (hasUsefulTime(path)) {
        if (!askTime(folder)) return std::nullopt;
        return folder;
    }
    const HANDLE notification = ::FindFirstChangeNotificationW(
        folder.path.c_str(), FALSE, FILE_NOTIFY_CHANGE_DIR_NAME | FILE_NOTIFY_CHANGE_FILE_NAME);
    if (notification == INVALID_HANDLE_VALUE) return std::nullopt;
    folder.notification.reset(notification);
    return folder;
}

void FolderWatch::adopt(std::uint32_t key, Watched folder) { folders_.insert_or_assign(key, std::move(folder)); }

void FolderWatch::add(std::uint32_t key, const std::wstring& path) {
    remove(key);
    if (std::optional<Watched> folder = begin(path)) adopt(key, std::move(*folder));
}

void FolderWatch::remove(std::uint32_t key) noexcept { folders_.erase(key); }

std::vector<std::uint32_t> FolderWatch::takeChanges() {
    const QuietSystem quiet;
    std::vector<std::uint32_t> changed;
    for (auto each = folders_.begin(); each != folders_.end();) {
        const std::uint32_t key = each->first;
        bool gone = false;
        if (hasChanged(each->second, gone)) changed.push_back(key);
        ++each;
        if (gone) remove(key);
    }
    return changed;
}

bool FolderWatch::askTime(Watched& folder) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (::GetFileAttributesExW(folder.path.c_str(), GetFileExInfoStandard, &data) == FALSE) return false;
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    folder.time = joined(data.ftLastWriteTime);
    folder.fresh = folder.time + kMoment > joined(now);
    return true;
}

bool FolderWatch::hasChanged(Watched& folder, bool& gone) {
    if (!folder.notification) {
        const std::uint64_t before = folder.time;
        const bool wasFresh = folder.fresh;
        gone = !askTime(folder);
        return gone || folder.time != before || wasFresh;
    }
    if (::WaitForSingleObject(folder.notification.get(), 0) == WAIT_TIMEOUT) return false;
    gone = ::FindNextChangeNotification(folder.notification.get()) == FALSE;
    return true;
}

}  // namespace tovar
