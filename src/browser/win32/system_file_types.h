#pragma once
#include <optional>
#include <string>

#include "browser/file_types.h"

namespace tovar {

/// Icons and type names of the running desktop; those of a folder are taken from the work folder.
class SystemFileTypes final : public FileTypes {
public:
    /// @param workFolder  without one, or when it is gone, folders look as the desktop shows any folder
    explicit SystemFileTypes(std::wstring workFolder) : workFolder_(std::move(workFolder)) {}

    [[nodiscard]] FileType ofFile(std::wstring_view fileName) override;
    [[nodiscard]] FileType ofFolder() override;
    [[nodiscard]] int openFolderIcon() override;

private:
    std::wstring workFolder_;
    std::optional<FileType> folder_;  ///< once it was asked for
};

}  // namespace tovar
