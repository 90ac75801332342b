#pragma once
#include "shell/system_information.h"

namespace tovar {

/// Windows' message table and the version resources of modules.
class WindowsSystemInformation final : public SystemInformation {
public:
    [[nodiscard]] std::wstring errorText(SystemErrorCode code) const override;
    [[nodiscard]] std::optional<FileVersion> fileVersion(const std::wstring& path) const override;
};

}  // namespace tovar
