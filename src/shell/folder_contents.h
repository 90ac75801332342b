#pragma once
#include <string>
#include <vector>

#include "shell/system_error.h"

namespace tovar {

/// A file or folder inside a folder.
struct FolderFile {
    std::wstring name;
    bool folder = false;
    bool hidden = false;  ///< shown although it is a hidden one
};

/// What is inside one folder, as a list of it needs that. Nothing here shows a message, and nothing throws but for want
/// of memory.
class FolderContents {
public:
    virtual ~FolderContents() = default;

    /// Appends what is inside a folder, in the order in which it is to be shown: the folders before the files.
    /// @return 0, or the system's error; then nothing was appended
    virtual SystemErrorCode list(const std::wstring& path, std::vector<FolderFile>& files) = 0;

    /// Looks from now on whether something comes, goes or changes its name inside a folder, and no other one.
    /// @param path  empty: no folder at all
    virtual void watch(const std::wstring& path) = 0;
    /// @return whether something has changed since it was last asked
    [[nodiscard]] virtual bool takeChange() = 0;
};

}  // namespace tovar
