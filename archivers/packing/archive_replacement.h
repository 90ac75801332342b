#pragma once
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "archivers/packing/packing_files.h"

namespace archiver {

/// A new archive that takes the place of an old one, or of none, once it is whole. Until then it is a file of another
/// name in the same folder; at any moment the disk holds the whole old archive or the whole new one. Without commit the
/// new file goes again.
class ArchiveReplacement {
public:
    static constexpr std::size_t kBuffer = std::size_t{256} << 10;

    /// @param buffer  bytes gathered before they are written; at least 1
    ArchiveReplacement(PackingFiles& files, const std::filesystem::path& archive, std::size_t buffer = kBuffer);
    ~ArchiveReplacement();
    ArchiveReplacement(const ArchiveReplacement&) = delete;
    ArchiveReplacement& operator=(const ArchiveReplacement&) = delete;

    /// Sees whether the old archive may be replaced, and makes the new file. First of all.
    /// @return kOk, kArcReadOnly, kArcFileOpen for an archive in use, kDiskSpace, kTmpOpen
    ReturnCode begin();

    /// Appends. @return kOk, kDiskSpace, kCannotWrite
    ReturnCode write(std::span<const char> bytes);
    /// Writes over bytes that were written before. @return as above
    ReturnCode patch(std::uint64_t offset, std::span<const char> bytes);
    /// Gives up what was appended behind an offset, so that appending goes on there. @param offset  at most `size()`
    void rewind(std::uint64_t offset) noexcept;
    /// Bytes appended so far.
    [[nodiscard]] std::uint64_t size() const noexcept { return written_ + buffer_.size(); }

    /// Has all bytes on the disk, and the file closed: it can be opened by `temporary()` and read. Nothing can be
    /// written any more. @return as above
    ReturnCode finish();
    [[nodiscard]] const std::filesystem::path& temporary() const noexcept { return temporary_; }

    /// Finishes, and gives the file the archive's name. Nobody may have the old archive open then, this process
    /// included. @return kOk, kArcFileOpen, kDiskSpace, kCannotWrite
    ReturnCode commit();

    /// In place of `commit`, when nothing is left in the archive: removes the old one and the new file.
    /// @return kOk, kArcFileOpen
    ReturnCode commitRemoval();

private:
    ReturnCode writeOut();
    void discard() noexcept;

    PackingFiles& files_;
    std::filesystem::path archive_, temporary_;
    std::unique_ptr<NewFile> file_;
    std::string buffer_;
    std::size_t bufferSize_;
    std::uint64_t written_ = 0;  ///< before the buffer
    std::uint64_t longest_ = 0;  ///< that the file has ever been
    bool made_ = false;          ///< the new file is there under its own name
    ReturnCode code_ = kOk;      ///< of the first write that failed: what follows would leave a gap
};

}  // namespace archiver
