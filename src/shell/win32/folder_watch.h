#pragma once
#include <windows.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tovar {

/// Tells which of several folders have changed. It is asked from time to time rather than telling by itself: a thread
/// that waits would have to be ended inside a host whose windows come and go, and the shell's own notifications leave
/// out what programs change without the shell.
class FolderWatch {
public:
    FolderWatch() = default;
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// Watches a folder from now on, instead of another one of that key.
    /// @param filter  FILE_NOTIFY_CHANGE_..., as for FindFirstChangeNotification
    /// @return false when the system cannot watch it
    bool add(std::uint32_t key, const std::wstring& path, DWORD filter);
    void remove(std::uint32_t key) noexcept;
    /// @return the keys of those that have changed since the last call
    [[nodiscard]] std::vector<std::uint32_t> takeChanges();

private:
    std::map<std::uint32_t, HANDLE> handles_;
};

}  // namespace tovar
