#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "archivers/convention/return_codes.h"

namespace archiver {

/// A file that was made and is being written.
class NewFile {
public:
    virtual ~NewFile() = default;
    /// Writes at an offset, up to which there are bytes already. @return kOk, kDiskSpace, kCannotWrite
    virtual ReturnCode write(std::uint64_t offset, std::span<const char> bytes) = 0;
    /// Ends the file at an offset up to which there are bytes. @return as above
    virtual ReturnCode cut(std::uint64_t size) = 0;
    /// Has everything on the disk when it returns. @return as above
    virtual ReturnCode flush() = 0;
};

/// What an archive's replacement needs of the file system. A small port, so that a test can let the process end at any
/// of its calls.
class PackingFiles {
public:
    virtual ~PackingFiles() = default;

    /// The absolute path of the file itself where the path is a link to it; it may have any length.
    [[nodiscard]] virtual std::filesystem::path resolve(const std::filesystem::path& archive) = 0;
    /// Whether an archive may be replaced.
    /// @return kOk, also when there is none; kArcReadOnly; kArcFileOpen for one in use, and for what is no file
    virtual ReturnCode checkReplaceable(const std::filesystem::path& archive) = 0;
    /// Makes a file that was not there. @return kOk, kSameNameFile, kDiskSpace, kReadOnly, kFileOpen
    virtual ReturnCode create(const std::filesystem::path& file, std::unique_ptr<NewFile>& made) = 0;
    /// Gives a finished file the attributes or mode of the one that it replaces, where there is one.
    virtual void keepAttributes(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// Gives a file another name in the same folder, in place of what has it, in one step that is on the disk when it
    /// returns. @return kOk, kArcFileOpen for a file in use, kDiskSpace, kCannotWrite
    virtual ReturnCode rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// @return kOk, also when there is none; kArcFileOpen
    virtual ReturnCode remove(const std::filesystem::path& file) = 0;
};

/// The system's own. Implemented in win32/ and posix/.
PackingFiles& systemPackingFiles() noexcept;

}  // namespace archiver
