#pragma once
#include <string>
#include <string_view>

#include "drivers/library_folders.h"
#include "shell/file_system.h"
#include "shell/system_paths.h"

namespace tovar {

/// Finds archiver libraries.
class LibraryFinder {
public:
    /// The ports outlive the finder.
    /// @param ownFolder  full path of the component's own folder, with or without a separator at its end; empty = none
    LibraryFinder(const SystemPaths& paths, const FileSystem& files, const LibraryFolders& folders,
                  std::wstring ownFolder);

    /// Looks in the system's standard search order, but not in the process's current folder: that may be an archive's,
    /// and hold a library planted there. The component's own folder comes last.
    /// @param library  file name, such as "UnZip32.dll"
    /// @return the full path, or an empty text
    [[nodiscard]] std::wstring find(std::wstring_view library) const;

private:
    [[nodiscard]] bool liesBelowCurrentFolder(std::wstring_view path) const;
    [[nodiscard]] std::wstring findIn(const std::wstring& folder, const std::wstring& file) const;

    const SystemPaths& paths_;
    const FileSystem& files_;
    const LibraryFolders& folders_;
    std::wstring ownFolder_;
};

}  // namespace tovar
