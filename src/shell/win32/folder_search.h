#pragma once
#include <windows.h>

#include <functional>
#include <string>

#include "shell/system_error.h"

namespace tovar {

/// Which folders and files the user wants to see, as set for the desktop's own windows.
class FolderVisibility {
public:
    FolderVisibility();
    [[nodiscard]] bool shows(const WIN32_FIND_DATAW& entry) const noexcept;

private:
    bool hidden_, system_;
};

/// What a search is for; folders alone are found faster where the file system can leave out the files. Files may turn
/// up all the same.
enum class SearchFor { Folders, Everything };

/// Looks at the entries of a folder, without "." and "..", until `entry` answers false.
/// @param path  absolute, of any length
/// @return 0, or the system's error
SystemErrorCode searchFolder(const std::wstring& path, SearchFor what,
                             const std::function<bool(const WIN32_FIND_DATAW&)>& entry);

}  // namespace tovar
