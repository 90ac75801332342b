#pragma once
#include <cstddef>
#include <filesystem>
#include <memory>

#include "archivers/formats/input_file.h"

namespace archiver::arj {

/// The files of one archive: the first volume as it was given, and those that follow beside it.
class VolumeSet {
public:
    VolumeSet(std::filesystem::path first, std::shared_ptr<const InputFile> file);

    /// Opens a volume; the one asked for last stays open.
    /// @param index  0 for the first
    /// @return kOk; kArcFileOpen when it is not there or may not be read, which leaves `file` null
    ReturnCode open(std::size_t index, std::shared_ptr<const InputFile>& file);

private:
    std::filesystem::path first_;
    std::shared_ptr<const InputFile> firstFile_;
    std::shared_ptr<const InputFile> latest_;
    std::size_t latestIndex_ = 0;
};

/// The name of a volume: the first one's, with .a01 to .a99 and .100 to .999 for its extension. A set may also begin
/// with one of its later volumes; any other extension, such as .arj or .exe, is that of volume 0.
/// @param otherCase  false for the letter as the first one's extension begins, true for the other
/// @return an empty path behind .999 and for an empty first one
std::filesystem::path volumePath(const std::filesystem::path& first, std::size_t index, bool otherCase);

}  // namespace archiver::arj
