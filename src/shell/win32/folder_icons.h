#pragma once
#include <string>

namespace tovar {

/// A folder's places in the system image lists.
struct FolderIcons {
    int closed = 0, open = 0;
};

/// The icons of any folder.
[[nodiscard]] FolderIcons plainFolderIcons();

/// A folder as the desktop shows it.
struct ShownFolder {
    std::wstring name;
    FolderIcons icons;
};

/// Asks the shell about one folder.
/// @param path  of an existing folder
/// @param name  its own name, for where the shell has no other
[[nodiscard]] ShownFolder shownFolder(const std::wstring& path, const std::wstring& name);

}  // namespace tovar
