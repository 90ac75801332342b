#pragma once
#include <string>
#include <string_view>

#include "shell/paths.h"
#include "shell/system_paths.h"

namespace tovar {

/// Makes a folder the process's current one while it lives. The host's own comes back afterwards.
class CurrentFolder {
public:
    /// @param folder  one that cannot become the current one leaves the current folder as it is
    CurrentFolder(SystemPaths& system, std::wstring_view folder) : system_(system), before_(system.currentFolder()) {
        if (HasDriveRoot(folder)) system_.setCurrentDrive(folder.front());
        system_.setCurrentFolder(std::wstring(folder));
    }
    ~CurrentFolder() {
        if (before_.empty()) return;
        if (HasDriveRoot(before_)) system_.setCurrentDrive(before_.front());
        system_.setCurrentFolder(before_);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    SystemPaths& system_;
    std::wstring before_;
};

}  // namespace tovar
