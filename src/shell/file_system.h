#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/regional.h"
#include "shell/system_error.h"

namespace tovar {

/// A set of file attributes, numbered as Windows does.
using FileAttributes = std::uint32_t;

namespace attribute {
inline constexpr FileAttributes kReadOnly = 1;
inline constexpr FileAttributes kHidden = 2;
inline constexpr FileAttributes kSystem = 4;
inline constexpr FileAttributes kFolder = 16;
inline constexpr FileAttributes kArchive = 32;
inline constexpr FileAttributes kNormal = 128;
}  // namespace attribute

/// What a folder listing tells of one entry.
struct FolderEntry {
    std::wstring name;
    FileAttributes attributes = 0;
    std::uint64_t size = 0;  ///< bytes
    bool link = false;       ///< a symbolic link or mount point: it may lead anywhere, even to a folder above it
};

/// What the system tells of one file or folder.
struct FileStatus {
    FileAttributes attributes = 0;
    std::uint64_t size = 0;     ///< bytes
    CalendarDate modifiedDate;  ///< local time
    ClockTime modifiedTime;
};

/// The files and folders of the system. Paths go to the system as they are; no call throws but for want of memory. A
/// path with a NUL in it names nothing: every call fails with it.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// @return nullopt when there is no such file or folder, or it cannot be asked
    [[nodiscard]] virtual std::optional<FileAttributes> attributes(const std::wstring& path) const = 0;
    [[nodiscard]] virtual std::optional<FileStatus> status(const std::wstring& path) const = 0;

    virtual SystemErrorCode setAttributes(const std::wstring& path, FileAttributes attributes) = 0;

    /// Creates one folder; its parent must exist. An existing one is an error.
    virtual SystemErrorCode createFolder(const std::wstring& path) = 0;

    /// Appends the entries of a folder in the system's order, "." and ".." included when the system names them.
    /// @param folder  ends with a separator
    virtual SystemErrorCode listFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) const = 0;

    /// Reads a whole file of the disk; devices and folders are refused.
    virtual SystemErrorCode readFile(const std::wstring& path, std::string& bytes) const = 0;

    /// Creates or truncates a file and writes the bytes.
    virtual SystemErrorCode writeFile(const std::wstring& path, std::string_view bytes) = 0;

    virtual SystemErrorCode deleteFile(const std::wstring& path) = 0;

    /// Removes an empty folder; a link is not followed.
    virtual SystemErrorCode removeFolder(const std::wstring& path) = 0;
};

}  // namespace tovar
