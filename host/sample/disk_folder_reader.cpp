#include "host/sample/disk_folder_reader.h"

#include <system_error>

namespace tovar::host {

bool DiskFolderReader::read(const std::filesystem::path& folder, std::vector<FolderItem>& items) {
    std::error_code error;
    std::filesystem::directory_iterator it(folder, std::filesystem::directory_options::skip_permission_denied, error);
    if (error) return false;
    for (const std::filesystem::directory_iterator end; it != end; it.increment(error)) {
        std::error_code unreadable;  // of one item: it is listed with what is known of it
        FolderItem item{it->path().filename().wstring(), it->is_directory(unreadable), 0};
        if (!item.isFolder) {
            item.size = it->file_size(unreadable);
            if (unreadable) item.size = 0;
        }
        items.push_back(std::move(item));
    }
    return !error;
}

}  // namespace tovar::host
