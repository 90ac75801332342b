#pragma once
#include <optional>
#include <string>

#include "shell/system_error.h"

namespace tovar {

/// The folders that the system and the process know by themselves.
class SystemPaths {
public:
    virtual ~SystemPaths() = default;

    /// @return the process's current folder, as the system writes it; empty when it cannot be asked
    [[nodiscard]] virtual std::wstring currentFolder() const = 0;
    virtual SystemErrorCode setCurrentFolder(const std::wstring& path) = 0;

    /// Makes a drive the current one; the current folder is then the one last used there.
    /// @param letter  A to Z in either case
    virtual SystemErrorCode setCurrentDrive(wchar_t letter) = 0;

    /// @return the 8.3 form of an existing path, or nullopt when it cannot be had
    [[nodiscard]] virtual std::optional<std::wstring> shortPathName(const std::wstring& path) const = 0;

    /// Looks for a file in the system's standard search order, with no default extension.
    /// @return its full path; empty when it is not found
    [[nodiscard]] virtual std::wstring searchPath(const std::wstring& name) const = 0;

    /// @return the folder for temporary files, as the system writes it. Throws SystemError.
    [[nodiscard]] virtual std::wstring tempFolder() const = 0;

    /// Creates a new empty file with a unique name: the first three characters of the prefix, a hexadecimal number and
    /// ".TMP" in either case.
    /// @return its full path. Throws SystemError.
    virtual std::wstring createTempFile(const std::wstring& folder, const std::wstring& prefix) = 0;
};

}  // namespace tovar
