#pragma once
#include <memory>
#include <string>
#include <vector>

namespace tovar {

/// Where the system looks for libraries.
class LibraryFolders {
public:
    virtual ~LibraryFolders() = default;
    /// @return full paths of the folders of the system's standard search order, the process's current folder left out
    [[nodiscard]] virtual std::vector<std::wstring> searchOrder() const = 0;
};

/// The system's own.
[[nodiscard]] std::unique_ptr<LibraryFolders> systemLibraryFolders();

}  // namespace tovar
