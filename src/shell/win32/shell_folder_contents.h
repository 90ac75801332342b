#pragma once
#include "shell/folder_contents.h"
#include "shell/win32/folder_watch.h"

namespace tovar {

/// What is inside a folder of this computer, of any length of path. Hidden files are listed as the desktop's own
/// windows do.
class ShellFolderContents final : public FolderContents {
public:
    SystemErrorCode list(const std::wstring& path, std::vector<FolderFile>& files) override;
    void watch(const std::wstring& path) override;
    [[nodiscard]] bool takeChange() override;

private:
    FolderWatch watch_;
};

}  // namespace tovar
