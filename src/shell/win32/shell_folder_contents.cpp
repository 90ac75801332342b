#include "shell/win32/shell_folder_contents.h"

#include <shlwapi.h>

#include <algorithm>
#include <iterator>

#include "shell/win32/folder_search.h"

namespace tovar {
namespace {

constexpr std::uint32_t kKey = 1;

}  // namespace

SystemErrorCode ShellFolderContents::list(const std::wstring& path, std::vector<FolderFile>& files) {
    std::vector<FolderFile> found;
    const FolderVisibility visibility;
    const SystemErrorCode error = searchFolder(path, SearchFor::Everything, [&](const WIN32_FIND_DATAW& entry) {
        if (!visibility.shows(entry)) return true;
        found.push_back({entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                         (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0});
        return true;
    });
    if (error != 0) return error;
    std::sort(found.begin(), found.end(), [](const FolderFile& left, const FolderFile& right) {
        if (left.folder != right.folder) return left.folder;
        return ::StrCmpLogicalW(left.name.c_str(), right.name.c_str()) < 0;
    });
    files.insert(files.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    return 0;
}

void ShellFolderContents::watch(const std::wstring& path) {
    watch_.remove(kKey);
    if (!path.empty()) watch_.add(kKey, path);
}

bool ShellFolderContents::takeChange() { return !watch_.takeChanges().empty(); }

}  // namespace tovar
