#pragma once
#include <string>

#include "shell/system_paths.h"

namespace tovar {

/// Gives the process the current folder back that it had: what the component does meanwhile must not change the folder
/// that its host works in.
class CurrentFolderKeeper {
public:
    /// @param paths  outlives the object
    explicit CurrentFolderKeeper(SystemPaths& paths) : paths_(paths), folder_(paths.currentFolder()) {}
    ~CurrentFolderKeeper() {
        try {
            // It may be gone, or on a drive that is: then the process stays where it is.
            if (!folder_.empty()) paths_.setCurrentFolder(folder_);
        } catch (...) {
            // For want of memory nothing else can be done.
        }
    }
    CurrentFolderKeeper(const CurrentFolderKeeper&) = delete;
    CurrentFolderKeeper& operator=(const CurrentFolderKeeper&) = delete;

private:
    SystemPaths& paths_;
    std::wstring folder_;
};

}  // namespace tovar
