#pragma once
#include <memory>
#include <string>

#include "archivers/formats/rar/group_decoder.h"
#include "archivers/formats/rar/packed_bytes.h"
#include "archivers/formats/tar/byte_stream.h"

namespace archiver::rar {

/// Some files of an archive, rewritten as a plain archive of one volume that holds nothing else. What unpacks it never
/// sees the headers that came from outside, and need not know about volumes.
class PlainStream final : public tar::ByteStream {
public:
    /// @param volumes  outlives the stream
    /// @param solid    the files are packed with the dictionary of those before, but for the first
    PlainStream(VolumeSet& volumes, bool solid, FileSource source);

    ReturnCode next(std::span<const char>& piece) noexcept override;
    std::uint64_t skip(std::uint64_t count) noexcept override;
    [[nodiscard]] std::uint64_t consumed() const noexcept override { return volumes_.read(); }

private:
    ReturnCode nextPiece(std::span<const char>& piece);

    VolumeSet& volumes_;
    bool solid_;
    FileSource source_;
    PackedBytes bytes_;
    bool first_ = true;
    bool ended_ = false;
    std::string header_;
    ReturnCode error_ = kOk;
};

}  // namespace archiver::rar
