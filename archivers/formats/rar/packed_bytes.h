#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "archivers/formats/rar/header_walk.h"

namespace archiver::rar {

/// The packed bytes of a file, over all its parts.
class PackedBytes {
public:
    /// @param volumes  outlives this
    explicit PackedBytes(VolumeSet& volumes) : volumes_(volumes) {}

    /// Begins with a file's first byte.
    void open(std::vector<Part> parts);

    /// Gives the next piece; an empty one behind the last.
    /// @param piece  valid until the next call
    /// @return kOk, kCannotRead when a volume ends too early or cannot be read, kArcFileOpen when it is gone
    ReturnCode next(std::span<const char>& piece);

    /// Leaves out bytes of the part that is being read.
    /// @return how many were left out, at most `count`
    std::uint64_t skip(std::uint64_t count) noexcept;

private:
    static constexpr std::size_t kPiece = std::size_t{64} * 1024;

    VolumeSet& volumes_;
    std::vector<Part> parts_;
    std::size_t part_ = 0;        ///< that is being read
    std::uint64_t position_ = 0;  ///< in it
    std::size_t volumeIndex_ = 0;
    Volume volume_;
    std::unique_ptr<char[]> buffer_;
};

}  // namespace archiver::rar
