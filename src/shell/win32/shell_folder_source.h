#pragma once
#include <windows.h>

#include <optional>

#include "shell/folder_source.h"
#include "shell/win32/folder_watch.h"

namespace tovar {

/// The folders of this computer.
///
/// The desktop, the computer and its drives come from the shell's namespace, which knows their names, which drives are
/// to be seen, and touches no drive to tell. What is inside a folder comes from the file system: the namespace ends at
/// 260 characters, makes an object of each of 20,000 folders, and shows archives as folders.
class ShellFolderSource final : public FolderSource {
public:
    [[nodiscard]] FolderPlace desktop() override;
    [[nodiscard]] FolderPlace documents() override;
    [[nodiscard]] FolderPlace computer() override;
    [[nodiscard]] std::vector<FolderPlace> drives() override;
    SystemErrorCode listFolders(const std::wstring& path, std::vector<SubFolder>& folders) override;
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

    FolderWatch watch_;
    std::optional<WatchedDrives> drives_;
};

}  // namespace tovar
