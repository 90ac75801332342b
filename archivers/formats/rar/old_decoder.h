#pragma once
#include "archivers/formats/rar/group_decoder.h"
#include "archivers/formats/rar/old_unpacker.h"
#include "archivers/formats/rar/packed_bytes.h"

namespace archiver::rar {

/// Unpacks files of RAR 2.9 to 4, stored ones too.
class OldDecoder final : public GroupDecoder {
public:
    /// @param volumes  outlives the decoder
    OldDecoder(VolumeSet& volumes, FileSource files);

    ReturnCode next(const DataSink& progress) override;
    [[nodiscard]] std::uint64_t count() const noexcept override { return count_; }
    ReturnCode read(const FileHeader& header, const DataSink& sink) override;

private:
    ReturnCode copy(std::uint64_t size, const DataSink& sink);

    FileSource files_;
    PackedBytes bytes_;
    OldUnpacker unpacker_;
    std::uint64_t count_ = 0;
    bool packed_ = false;  ///< the current file is
};

}  // namespace archiver::rar
