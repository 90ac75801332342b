#pragma once
#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "shell/win32/handles.h"

namespace tovar {

using UniqueNotification = std::unique_ptr<void, CloseWith<&::FindCloseChangeNotification>>;

/// Tells which of several folders have changed: something in them has come, gone or got another name.
///
/// It is asked from time to time rather than telling by itself: a thread that waits would have to be ended inside a
/// host whose windows come and go, and the shell's own notifications leave out what programs change without the shell.
/// On the disks of this computer the folder's time is asked. Elsewhere that would take long, or, on FAT, tell nothing:
/// there the system notifies, at the price of a handle that can keep a folder from being deleted and a stick from being
/// taken out.
class FolderWatch {
public:
    /// A folder that is watched. It is begun in any thread, as that may take long.
    struct Watched {
        std::wstring path;
        UniqueNotification notification;  ///< none: the folder's time is asked
        std::uint64_t time = 0;           ///< in steps of 100 nanoseconds
        /// A change at the same moment as the last one would leave the time as it is.
        bool fresh = false;
    };
    /// @param path  absolute, of any length
    /// @return nullopt where the folder cannot be watched
    static std::optional<Watched> begin(const std::wstring& path);

    /// Watches a folder, begun before, instead of another one of that key.
    void adopt(std::uint32_t key, Watched folder);
    [[nodiscard]] bool watches(std::uint32_t key) const { return folders_.contains(key); }
    /// Watches a folder from now on, instead of another one of that key.
    /// @param path  absolute, of any length
    void add(std::uint32_t key, const std::wstring& path);
    void remove(std::uint32_t key) noexcept;
    /// @return the keys of those that have changed since the last call
    [[nodiscard]] std::vector<std::uint32_t> takeChanges();

private:
    static bool askTime(Watched& folder);
    [[nodiscard]] static bool hasChanged(Watched& folder, bool& gone);

    std::map<std::uint32_t, Watched> folders_;
};

}  // namespace tovar
