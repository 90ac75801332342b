#pragma once
#include "shell/file_system.h"

namespace tovar {

/// The disks of Windows; link or not, a path leads where the system takes it.
class WindowsFileSystem final : public FileSystem {
public:
    [[nodiscard]] std::optional<FileAttributes> attributes(const std::wstring& path) const override;
    [[nodiscard]] std::optional<FileStatus> status(const std::wstring& path) const override;
    SystemErrorCode setAttributes(const std::wstring& path, FileAttributes attributes) override;
    SystemErrorCode createFolder(const std::wstring& path) override;
    SystemErrorCode listFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) const override;
    SystemErrorCode readFile(const std::wstring& path, std::string& bytes) const override;
    SystemErrorCode writeFile(const std::wstring& path, std::string_view bytes) override;
    SystemErrorCode deleteFile(const std::wstring& path) override;
    SystemErrorCode removeFolder(const std::wstring& path) override;
};

}  // namespace tovar
