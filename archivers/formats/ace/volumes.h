#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "archivers/formats/ace/ace_reader.h"
#include "archivers/formats/ace/headers.h"
#include "archivers/formats/input_file.h"

namespace archiver::ace {

/// One file of an archive, its main header read.
class Volume {
public:
    Volume(std::filesystem::path path, std::unique_ptr<InputFile> file) noexcept
        : path_(std::move(path)), file_(std::move(file)) {}

    /// Finds the main header: at the start, or behind a program within the first 512 KiB.
    /// @return kOk, kFileStyle when there is none, kHeaderCrc, kHeaderBroken, kCannotRead
    ReturnCode findMainHeader();

    /// Reads the header at an offset and checks it. The header's bytes live until the next call.
    /// @return kOk, kNoMoreEntries at the file's end, kHeaderBroken, kHeaderCrc, kCannotRead
    ReturnCode headerAt(std::uint64_t offset, RawHeader& header);

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    [[nodiscard]] const InputFile& file() const noexcept { return *file_; }
    [[nodiscard]] const MainHeader& main() const noexcept { return main_; }
    [[nodiscard]] bool multiVolume() const noexcept { return (main_.flags & main_flag::kMultiVolume) != 0; }
    [[nodiscard]] std::uint64_t start() const noexcept { return start_; }              ///< of the main header
    [[nodiscard]] std::uint64_t firstHeader() const noexcept { return firstHeader_; }  ///< the one behind it

private:
    friend class VolumeChain;
    ReturnCode searchMainHeader();
    ReturnCode mainHeaderAt(std::uint64_t offset);

    std::filesystem::path path_;
    std::unique_ptr<InputFile> file_;
    MainHeader main_;
    std::uint64_t start_ = 0, firstHeader_ = 0;
    std::vector<char> window_;  ///< bytes of the file from windowOffset_ on
    std::uint64_t windowOffset_ = 0;
    std::weak_ptr<Volume> next_;
};

/// Goes from one volume to the next: NAME.ACE, NAME.C00, NAME.C01 and so on.
class VolumeChain {
public:
    explicit VolumeChain(AceFileOpener opener) : opener_(std::move(opener)) {}

    /// Opens a file and finds its main header.
    /// @return kOk, or why there is no volume: as openInputFile and Volume::findMainHeader tell
    ReturnCode open(const std::filesystem::path& path, std::shared_ptr<Volume>& volume) const;

    /// The volume that follows.
    /// @param ask  whether the callback is asked for a volume that is missing, and told of one that was opened
    /// @return kOk, kArcFileOpen when it is missing or a file of its name is no such volume, kUserCancel
    ReturnCode next(Volume& volume, bool ask, std::shared_ptr<Volume>& following);

    void setCallback(AceVolumeCallback callback) { callback_ = std::move(callback); }

    /// The volume that was missing last; empty when none was.
    [[nodiscard]] const std::filesystem::path& missing() const noexcept { return missing_; }

private:
    bool openFollowing(const Volume& volume, const std::filesystem::path& path,
                       std::shared_ptr<Volume>& following) const;

    AceFileOpener opener_;
    AceVolumeCallback callback_;
    std::filesystem::path missing_;
};

/// The name that the volume after this one has, in the letter case of this one's extension.
/// @return nullopt behind the last name there is
std::optional<std::filesystem::path> nextVolumeName(const std::filesystem::path& volume);

/// The same name with its extension's letters in the other case; what has no letters stays.
std::filesystem::path otherCase(const std::filesystem::path& volume);

}  // namespace archiver::ace
