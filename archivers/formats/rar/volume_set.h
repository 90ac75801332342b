#pragma once
#include <cstddef>
#include <filesystem>
#include <memory>

#include "archivers/formats/input_file.h"
#include "archivers/formats/rar/signature.h"

namespace archiver::rar {

/// One file of an archive.
struct Volume {
    std::shared_ptr<const InputFile> file;
    std::uint64_t blocks = 0;  ///< where its blocks begin
};

/// The files of one archive: the one that was opened, and those that follow beside it.
class VolumeSet {
public:
    VolumeSet(std::filesystem::path first, std::shared_ptr<const InputFile> file);

    /// Finds the archive in the first file and reads its main header.
    /// @return kOk, or what openRar answers
    ReturnCode begin();

    [[nodiscard]] Generation generation() const noexcept { return start_.generation; }
    [[nodiscard]] bool selfExtracting() const noexcept { return start_.offset > 0; }
    [[nodiscard]] std::uint64_t firstSize() const noexcept { return first_.file->size(); }

    /// Opens a volume; the one asked for last stays open.
    /// @param index  0 for the first
    /// @return kOk; kArcFileOpen when it is not there, may not be read or is no volume of this archive
    ReturnCode open(std::size_t index, Volume& volume);

    /// Takes note of how far a volume was read.
    void markRead(std::size_t index, std::uint64_t offset) noexcept { read_ = index == 0 ? offset : firstSize(); }

    /// Bytes of the first volume that were read, for a progress; how many others there are is not known.
    [[nodiscard]] std::uint64_t read() const noexcept { return read_; }

private:
    [[nodiscard]] bool isVolume(const InputFile& file, std::size_t index, Volume& volume) const;

    std::filesystem::path path_;
    Volume first_;
    Start start_;
    Block main_;
    Volume latest_;
    std::size_t latestIndex_ = 0;
    std::uint64_t read_ = 0;
};

}  // namespace archiver::rar
