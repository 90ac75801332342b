#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/file_system.h"
#include "shell/work_folder.h"

namespace tovar {

/// The processes of the system, as far as the names of own items need them.
class Processes {
public:
    virtual ~Processes() = default;
    [[nodiscard]] virtual std::uint32_t current() const = 0;
    /// @return true also where that cannot be told
    [[nodiscard]] virtual bool isRunning(std::uint32_t process) const = 0;
    /// @return 32 hexadecimal digits that nobody can guess; empty on failure
    [[nodiscard]] virtual std::wstring unguessable() = 0;
};

class OwnItems;

/// A folder of the component's own in the work folder. It goes with the object, with all that is in it.
class OwnFolder {
public:
    OwnFolder(OwnItems& items, std::wstring path) : items_(items), path_(std::move(path)) {}
    ~OwnFolder();
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    /// @return full path, with a separator at its end
    [[nodiscard]] const std::wstring& path() const noexcept { return path_; }

private:
    OwnItems& items_;
    std::wstring path_;
};

/// Files and folders in the work folder that belong to the component alone, under names that nobody can guess and that
/// say which process made them. Unlike copies that were opened (opened_copies.h), which lie among others' files under
/// their members' names and are recorded one by one, each goes as a whole: one that is in use then goes at the next
/// chance, and those of a host that ended too early go when the next one shows an archive.
class OwnItems {
public:
    /// All outlive the object.
    OwnItems(WorkFolder& workFolder, FileSystem& files, Processes& processes)
        : workFolder_(workFolder), files_(files), processes_(processes) {}

    /// Makes an empty, hidden file.
    /// @return full path. Throws SystemError.
    [[nodiscard]] std::wstring makeFile();
    /// Throws SystemError.
    [[nodiscard]] std::shared_ptr<const OwnFolder> makeFolder();

    /// Removes a file, here or where it was copied to.
    void removeFile(const std::wstring& path) noexcept;
    /// @param path  with a separator at its end
    void removeFolder(const std::wstring& path) noexcept;

    /// Removes what could not be removed before, and what processes that have ended have left in the work folder.
    void removeLeftOver() noexcept;

    /// @return whether a file or folder of this name was made by the component, in whatever process
    [[nodiscard]] static bool isOwnName(std::wstring_view name);

private:
    [[nodiscard]] std::wstring freshPath();
    bool tryRemove(const std::wstring& path);

    WorkFolder& workFolder_;
    FileSystem& files_;
    Processes& processes_;
    std::vector<std::wstring> left_;  ///< still in use; folders with a separator at the end
};

}  // namespace tovar
