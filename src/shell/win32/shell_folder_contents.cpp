#include "shell/win32/shell_folder_contents.h"

#include <shlwapi.h>

#include <algorithm>
#include <utility>

#include "shell/win32/folder_search.h"

namespace tovar {
namespace {

constexpr std::uint32_t kKey = 1;

FolderContents::Files readFolder(const std::wstring& path) {
    FolderContents::Files found;
    const FolderVisibility visibility;
    const SystemErrorCode error = searchFolder(path, SearchFor::Everything, [&](const WIN32_FIND_DATAW& entry) {
        if (!visibility.shows(entry)) return true;
        found.push_back({entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                         (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0});
        return true;
    });
    if (error != 0) return {};
    std::sort(found.begin(), found.end(), [](const FolderFile& left, const FolderFile& right) {
        if (left.folder != right.folder) return left.folder;
        return ::StrCmpLogicalW(left.name.c_str(), right.name.c_str()) < 0;
    });
    return found;
}

}  // namespace

ShellFolderContents::ShellFolderContents(Reader reader)
    : folder_(reader ? std::move(reader) : Reader(&readFolder), [] { return Files(); }) {}

std::optional<FolderContents::Files> ShellFolderContents::look(const std::wstring& path) {
    if (std::exchange(path_, path) != path) folder_.unwatch(kKey);
    return path.empty() ? Files() : folder_.look(kKey, path);
}

std::optional<FolderContents::Files> ShellFolderContents::takeLate() {
    auto late = folder_.takeLate();
    return late.empty() ? std::nullopt : std::optional(std::move(late.front().second));
}

bool ShellFolderContents::takeChange() { return !folder_.takeChanges().empty(); }

}  // namespace tovar
