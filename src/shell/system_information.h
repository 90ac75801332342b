#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "shell/system_error.h"

namespace tovar {

/// The two halves of a module's file version, each two 16-bit numbers.
struct FileVersion {
    std::uint32_t mostSignificant = 0;
    std::uint32_t leastSignificant = 0;
};

/// What the system can tell about its errors and about modules.
class SystemInformation {
public:
    virtual ~SystemInformation() = default;

    /// @return the system's words for an error number, without line breaks; empty when it has none
    [[nodiscard]] virtual std::wstring errorText(SystemErrorCode code) const = 0;

    /// @return the file version of a module, or nullopt when the file is missing or has no version resource
    [[nodiscard]] virtual std::optional<FileVersion> fileVersion(const std::wstring& path) const = 0;
};

}  // namespace tovar
