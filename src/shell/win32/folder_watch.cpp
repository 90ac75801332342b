#include "shell/win32/folder_watch.h"

#include "shell/win32/system_calls.h"

namespace tovar {

FolderWatch::~FolderWatch() {
    for (const auto& [key, handle] : handles_) ::FindCloseChangeNotification(handle);
}

bool FolderWatch::add(std::uint32_t key, const std::wstring& path, DWORD filter) {
    remove(key);
    const QuietSystem quiet;
    const HANDLE handle = ::FindFirstChangeNotificationW(path.c_str(), FALSE, filter);
    if (handle == INVALID_HANDLE_VALUE) return false;
    handles_.emplace(key, handle);
    return true;
}

void FolderWatch::remove(std::uint32_t key) noexcept {
    const auto found = handles_.find(key);
    if (found == handles_.end()) return;
    ::FindCloseChangeNotification(found->second);
    handles_.erase(found);
}

std::vector<std::uint32_t> FolderWatch::takeChanges() {
    std::vector<std::uint32_t> changed;
    for (auto each = handles_.begin(); each != handles_.end();) {
        const auto [key, handle] = *each;
        ++each;
        if (::WaitForSingleObject(handle, 0) == WAIT_TIMEOUT) continue;
        changed.push_back(key);
        // The folder has gone, or its drive: a watch that stayed would keep it from going altogether.
        if (::FindNextChangeNotification(handle) == FALSE) remove(key);
    }
    return changed;
}

}  // namespace tovar
