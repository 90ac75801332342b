#pragma once
#include <memory>

#include "archivers/formats/rar/group_decoder.h"
#include "archivers/formats/rar/plain_stream.h"
#include "archivers/formats/tar/archive_handle.h"

namespace archiver::rar {

/// Unpacks files of RAR 5, by libarchive.
class NewDecoder final : public GroupDecoder {
public:
    /// @param volumes  outlives the decoder
    /// @param solid    the files are packed with the dictionary of those before, but for the first
    NewDecoder(VolumeSet& volumes, bool solid, FileSource files);

    ReturnCode next(const DataSink& progress) override;
    [[nodiscard]] std::uint64_t count() const noexcept override { return count_; }
    ReturnCode read(const FileHeader& header, const DataSink& sink) override;

private:
    ReturnCode skipRest(const DataSink& progress);
    [[nodiscard]] ReturnCode failure() const noexcept;

    PlainStream stream_;
    tar::StreamSource source_;
    tar::UniqueArchive handle_;
    std::uint64_t count_ = 0;
    bool opened_ = false;
    bool drained_ = true;  ///< nothing is left of the current file
};

}  // namespace archiver::rar
