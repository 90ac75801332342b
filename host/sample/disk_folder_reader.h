#pragma once
#include "host/sample/host_presenter.h"

namespace tovar::host {

/// Folders of the disk.
class DiskFolderReader final : public FolderReader {
public:
    bool read(const std::filesystem::path& folder, std::vector<FolderItem>& items) override;
};

}  // namespace tovar::host
