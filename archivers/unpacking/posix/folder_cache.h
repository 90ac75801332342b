#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/unpacking/posix/descriptor.h"

namespace archiver {

using SharedFolder = std::shared_ptr<const Descriptor>;

/// A folder, or why there is none.
struct FolderResult {
    SharedFolder folder;  ///< null on failure
    int error = 0;        ///< errno
    bool made = false;    ///< it was not there
};

/// The folders below the target, as descriptors: each is entered from the one above it and never through a link, and a
/// file made in it lands there whatever becomes of its name. The last ones are kept, so that many files in one folder
/// cost one system call each.
class FolderCache {
public:
    explicit FolderCache(Descriptor root);

    /// @param name  below the target, parts joined with "/"; empty for the target itself
    FolderResult open(std::string_view name) { return enter(name, false); }
    /// Makes it, and what is missing above it.
    FolderResult make(std::string_view name) { return enter(name, true); }

    [[nodiscard]] const SharedFolder& root() const noexcept { return root_; }

private:
    struct Entry {
        std::string name;
        SharedFolder folder;
        std::uint64_t used = 0;
    };

    FolderResult enter(std::string_view name, bool make);
    SharedFolder find(std::string_view name) noexcept;
    void keep(std::string_view name, const SharedFolder& folder);

    SharedFolder root_;
    std::mutex mutex_;
    std::vector<Entry> entries_;
    std::uint64_t clock_ = 0;
};

/// Whether it is one part of a name and leads nowhere else.
bool isPlainPart(std::string_view part) noexcept;

/// Opens a folder for what is done in it. @return none: errno tells why
Descriptor openFolderAt(int above, const char* name, bool followLink) noexcept;

}  // namespace archiver
