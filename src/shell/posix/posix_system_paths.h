#pragma once
#include "shell/system_paths.h"

namespace tovar {

/// POSIX has one root, no short names and no search for libraries by bare name.
class PosixSystemPaths final : public SystemPaths {
public:
    [[nodiscard]] std::wstring currentFolder() const override;
    SystemErrorCode setCurrentFolder(const std::wstring& path) override;
    SystemErrorCode setCurrentDrive(wchar_t letter) override;
    [[nodiscard]] std::optional<std::wstring> shortPathName(const std::wstring& path) const override;
    [[nodiscard]] std::wstring searchPath(const std::wstring& name) const override;
    [[nodiscard]] std::wstring tempFolder() const override;
    std::wstring createTempFile(const std::wstring& folder, const std::wstring& prefix) override;
};

}  // namespace tovar
