#pragma once
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/file_operations.h"
#include "shell/file_system.h"
#include "shell/work_folder.h"

namespace tovar {

/// Copies of files and folders in a folder of their own in the work folder, placed there as they shall lie in an
/// archive. They go with the object.
class StagedItems {
public:
    /// What staging works with; all of it outlives the items.
    struct Ports {
        WorkFolder& workFolder;
        FileSystem& files;
        FileOperations& operations;
    };

    /// Makes the folder.
    /// @param folderKey  where in the archive, "\" at both ends; one that could lead out of the work folder is refused
    /// @throws SystemError when it cannot be made
    StagedItems(const Ports& ports, std::wstring_view folderKey);
    ~StagedItems();
    StagedItems(const StagedItems&) = delete;
    StagedItems& operator=(const StagedItems&) = delete;

    /// Copies items, without questions.
    /// @param paths    full paths
    /// @param leftOut  full path of a file that is not copied although it lies in one of the items
    /// @return false when not all could be copied, or two of them have the same name
    [[nodiscard]] bool add(WindowHandle owner, const std::vector<std::wstring>& paths,
                           const std::wstring& leftOut = {});

    /// @return the folder that stands for the archive's root, with a separator at its end
    [[nodiscard]] const std::wstring& base() const noexcept { return base_; }
    /// @return the items, relative to that folder
    [[nodiscard]] const std::vector<std::wstring>& names() const noexcept { return names_; }

private:
    /// Names to copy, a NUL between them, by the folder that they are in and the one that they go to.
    using Copies = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;

    bool plan(Copies& copies, std::wstring folder, std::wstring name, const std::wstring& leftOut);
    void makeFolders(std::wstring_view folderKey);
    void remove() noexcept;

    Ports ports_;
    std::wstring base_, below_;  ///< below the base, with a separator at its end; empty = the base
    std::vector<std::wstring> names_;
};

/// @return whether a path is that of a folder, or lies in it
[[nodiscard]] bool isWithin(std::wstring_view path, std::wstring_view folder);

}  // namespace tovar
