#include "drivers/library_finder.h"

#include <utility>

#include "drivers/module_loader.h"
#include "shell/paths.h"

namespace tovar {

LibraryFinder::LibraryFinder(const SystemPaths& paths, const FileSystem& files, const LibraryFolders& folders,
                             std::wstring ownFolder)
    : paths_(paths), files_(files), folders_(folders), ownFolder_(std::move(ownFolder)) {}

std::wstring LibraryFinder::find(std::wstring_view library) const {
    const std::wstring file = moduleFileName(library);
    std::wstring found = paths_.searchPath(file);
    if (!found.empty() && !liesBelowCurrentFolder(found)) {
        return found;
    }
    // The current folder was asked, or one that the search path names relative to it. Another place of the search order
    // may hold a copy too, and the current folder may be such a place in its own right.
    for (const std::wstring& folder : folders_.searchOrder()) {
        if (std::wstring path = findIn(folder, file); !path.empty()) {
            return path;
        }
    }
    return findIn(ownFolder_, file);
}

bool LibraryFinder::liesBelowCurrentFolder(std::wstring_view path) const {
    const std::wstring current = upperCase(AddTrailingSeparator(paths_.currentFolder()));
    return upperCase(path).starts_with(current);  // of an unknown current folder every path counts as below it
}

std::wstring LibraryFinder::findIn(const std::wstring& folder, const std::wstring& file) const {
    if (folder.empty()) {
        return {};
    }
    std::wstring path = AddTrailingSeparator(folder) + file;
    const std::optional<FileAttributes> attributes = files_.attributes(path);
    return attributes && (*attributes & attribute::kFolder) == 0 ? path : std::wstring();
}

}  // namespace tovar
