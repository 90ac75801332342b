#pragma once
#include <functional>
#include <memory>
#include <string>

#include "archivers/formats/rar/header_walk.h"
#include "archivers/formats/tar/byte_stream.h"

namespace archiver::rar {

/// Gives the next file whose bytes are wanted; false behind the last one.
using FileSource = std::function<bool(PackedFile& file)>;

/// Some files of an archive, rewritten as a plain archive of one volume that holds nothing else. What unpacks it never
/// sees the headers that came from outside, and need not know about volumes.
class PlainStream final : public tar::ByteStream {
public:
    /// @param volumes  outlives the stream
    /// @param solid    the files are packed with the dictionary of those before, but for the first
    PlainStream(VolumeSet& volumes, bool solid, FileSource source);

    ReturnCode next(std::span<const char>& piece) noexcept override;
    std::uint64_t skip(std::uint64_t count) noexcept override;

private:
    ReturnCode nextPiece(std::span<const char>& piece);
    ReturnCode nextBytes(std::span<const char>& piece);

    static constexpr std::size_t kPiece = std::size_t{64} * 1024;

    VolumeSet& volumes_;
    bool solid_;
    FileSource source_;
    PackedFile file_;
    std::size_t part_ = 0;        ///< that is being read
    std::uint64_t position_ = 0;  ///< in it
    std::size_t volumeIndex_ = 0;
    Volume volume_;
    bool first_ = true;
    bool ended_ = false;
    std::string header_;
    std::unique_ptr<char[]> buffer_;
    ReturnCode error_ = kOk;
};

}  // namespace archiver::rar
