#pragma once
#include <functional>

#include "shell/folder_contents.h"
#include "shell/win32/folder_watch.h"
#include "shell/win32/side_thread.h"

namespace tovar {

/// What is inside a folder of this computer, of any length of path. Hidden files are listed as the desktop's own
/// windows do. Folders of other computers and of disks that may be absent are looked into in a thread of their own.
class ShellFolderContents final : public FolderContents {
public:
    /// What looks into a folder; called in any thread.
    using Reader = std::function<Files(const std::wstring& path)>;

    /// @param reader  the system's own where it is empty
    explicit ShellFolderContents(Reader reader = {});

    std::optional<Files> look(const std::wstring& path) override;
    [[nodiscard]] std::optional<Files> takeLate() override;
    [[nodiscard]] bool takeChange() override;

private:
    struct Answer {
        Files files;
        std::optional<FolderWatch::Watched> watch;
    };
    Files take(Answer answer);

    Reader reader_;
    std::wstring path_;  ///< that is watched
    FolderWatch watch_;
    SideWork<Answer> slow_;
};

}  // namespace tovar
