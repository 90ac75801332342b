#pragma once
#include <windows.h>

#include <optional>

#include "shell/folder_source.h"
#include "shell/win32/watched_folders.h"

namespace tovar {

/// The folders of this computer.
///
/// The desktop, the computer and its drives come from the shell's namespace, which knows their names, which drives are
/// to be seen, and touches no drive to tell. What is inside a folder comes from the file system: the namespace ends at
/// 260 characters, makes an object of each of 20,000 folders, and shows archives as folders. Folders of other
/// computers, and on disks that may have to be put in or woken up, are looked into in threads of their own.
class ShellFolderSource final : public FolderSource {
public:
    using Reader = WatchedFolders<FolderLook>::Reader;

    /// @param reader  the system's own where it is empty
    explicit ShellFolderSource(Reader reader = {});

    [[nodiscard]] FolderPlace desktop() override;
    [[nodiscard]] FolderPlace documents() override;
    [[nodiscard]] FolderPlace computer() override;
    [[nodiscard]] std::vector<FolderPlace> drives() override;
    [[nodiscard]] bool isSlow(const std::wstring& path) override;
    std::optional<FolderLook> lookInto(FolderWatchKey key, const std::wstring& path) override;
    [[nodiscard]] std::vector<LateLook> takeLate() override;
    [[nodiscard]] bool mayHaveFolders(const std::wstring& path) override;
    [[nodiscard]] bool isFolder(const std::wstring& path) override;
    void watchFolder(FolderWatchKey key, const std::wstring& path) override;
    void watchDrives(FolderWatchKey key) override;
    void unwatch(FolderWatchKey key) override;
    [[nodiscard]] std::vector<FolderWatchKey> takeChanges() override;

private:
    struct WatchedDrives {
        FolderWatchKey key;
        DWORD letters;
    };

    WatchedFolders<FolderLook> folders_;
    std::optional<WatchedDrives> drives_;
};

}  // namespace tovar
