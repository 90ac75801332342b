#pragma once
#include "shell/system_information.h"

namespace tovar {

/// The C library's error texts; modules have no version resource here.
class PosixSystemInformation final : public SystemInformation {
public:
    [[nodiscard]] std::wstring errorText(SystemErrorCode code) const override;
    [[nodiscard]] std::optional<FileVersion> fileVersion(const std::wstring& path) const override;
};

}  // namespace tovar
