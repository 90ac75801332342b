#pragma once
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// A file's bytes at any offset, without a position of its own.
class InputFile {
public:
    virtual ~InputFile() = default;

    /// Bytes in the file when it was opened.
    [[nodiscard]] virtual std::uint64_t size() const noexcept = 0;

    /// When the file was changed last.
    [[nodiscard]] virtual Moment modified() const noexcept = 0;

    /// Reads as many bytes as there are from `offset` on, at most `into.size()`.
    /// @return bytes read, fewer than asked for only at the end of the file; nullopt when the system reports an error
    [[nodiscard]] virtual std::optional<std::size_t> readAt(std::uint64_t offset,
                                                            std::span<char> into) const noexcept = 0;

    /// Reads all of `into`.
    /// @return false at the end of the file and on an error
    [[nodiscard]] bool readAll(std::uint64_t offset, std::span<char> into) const noexcept {
        return readAt(offset, into) == into.size();
    }
};

/// Outcome of opening: a file, or why there is none.
struct InputFileResult {
    std::unique_ptr<InputFile> file;  ///< null on failure
    ReturnCode code = kOk;            ///< kNotFindArcFile when it is not there, kArcFileOpen for everything else
};

/// Opens a regular file for reading; others may go on reading, writing and deleting it. Folders, pipes and devices are
/// refused. Implemented in win32/ and posix/.
InputFileResult openInputFile(const std::filesystem::path& file);

}  // namespace archiver
