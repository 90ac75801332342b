#include "shell/file_tree.h"

#include <vector>

namespace tovar {

void removeTree(FileSystem& files, const std::wstring& root) {
    std::vector<std::wstring> folders{root};
    std::vector<FolderEntry> entries;
    for (std::size_t at = 0; at < folders.size(); ++at) {
        const std::wstring folder = folders[at];
        entries.clear();
        if (files.listFolder(folder, entries) != 0) continue;
        for (const FolderEntry& entry : entries) {
            if (entry.name == L"." || entry.name == L"..") continue;
            const std::wstring path = folder + entry.name;
            if ((entry.attributes & attribute::kReadOnly) != 0) files.setAttributes(path, attribute::kNormal);
            if ((entry.attributes & attribute::kFolder) == 0) {
                files.deleteFile(path);
            } else if (entry.link) {
                files.removeFolder(path);
            } else {
                folders.push_back(path + folder.back());
            }
        }
    }
    while (!folders.empty()) {
        files.removeFolder(folders.back());
        folders.pop_back();
    }
}

}  // namespace tovar
