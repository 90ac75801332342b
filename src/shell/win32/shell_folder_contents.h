#pragma once
#include <optional>
#include <string>

#include "shell/folder_contents.h"
#include "shell/win32/watched_folders.h"

namespace tovar {

/// What is inside a folder of this computer, of any length of path. Hidden files are listed as the desktop's own
/// windows do. Folders of other computers and of disks that may be absent are looked into in a thread of their own.
class ShellFolderContents final : public FolderContents {
public:
    using Reader = WatchedFolders<Files>::Reader;

    /// @param reader  the system's own where it is empty
    explicit ShellFolderContents(Reader reader = {});

    std::optional<Files> look(const std::wstring& path) override;
    [[nodiscard]] std::optional<Files> takeLate() override;
    [[nodiscard]] bool takeChange() override;

private:
    std::wstring path_;  ///< that is watched
    WatchedFolders<Files> folder_;
};

}  // namespace tovar
