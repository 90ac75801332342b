#pragma once
#include <filesystem>
#include <optional>
#include <vector>

#include "archivers/formats/input_file.h"
#include "archivers/packing/source_item.h"

namespace archiver {

/// One name in a folder that is packed.
struct ListedSource {
    std::filesystem::path name;  ///< one part
    SourceFacts facts;
};

/// The file system, as a packer sees it. Files may be opened by several threads at once.
class SourceSystem {
public:
    virtual ~SourceSystem() = default;

    /// The absolute form that may have any length; relative paths start at the process's current folder.
    [[nodiscard]] virtual std::filesystem::path absolute(const std::filesystem::path& path) = 0;
    /// Whether names that differ in the case of letters alone name one file.
    [[nodiscard]] virtual bool ignoresCase() const noexcept = 0;
    /// What stands at a path; nullopt when nothing does.
    [[nodiscard]] virtual std::optional<SourceFacts> find(const std::filesystem::path& path) = 0;
    /// The names in a folder, without "." and "..", in any order.
    /// @return kOk, kNotExist, kCannotRead
    virtual ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) = 0;
    /// Opens a file for reading; others may go on reading, writing and deleting it.
    [[nodiscard]] virtual InputFileResult open(const std::filesystem::path& file) = 0;
    /// Removes a file after it was moved into an archive; of a link the link. @return whether it is gone
    virtual bool removeFile(const std::filesystem::path& file) = 0;
    /// Removes an empty folder likewise.
    virtual bool removeFolder(const std::filesystem::path& folder) = 0;
};

/// The system's own. Implemented in win32/ and posix/.
SourceSystem& systemSources() noexcept;

}  // namespace archiver
