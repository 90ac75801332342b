#pragma once
#include <cstddef>
#include <vector>

#include "archivers/formats/rar/volume_set.h"

namespace archiver::rar {

/// Where a header stands.
struct Place {
    std::size_t volume = 0;
    std::uint64_t offset = 0;
    bool operator==(const Place&) const = default;
};

/// Packed bytes in one volume.
struct Part {
    Place place;
    std::uint64_t size = 0;
};

/// A file of the archive with all its parts.
struct PackedFile {
    FileHeader header;  ///< of its first part, with the sum of the packed sizes and the checksum of the last part
    std::vector<Part> parts;
    Place place;             ///< of its first header
    ReturnCode state = kOk;  ///< kArcFileOpen when parts are missing, kCannotRead when its beginning is
};

/// Walks the files of an archive from one header to the next, over all its volumes.
class HeaderWalk {
public:
    /// @param volumes  outlives the walk; its first volume is known
    explicit HeaderWalk(VolumeSet& volumes) : volumes_(volumes) { rewind(); }

    void rewind();
    void goTo(const Place& place);

    /// @return kOk, kNoMoreEntries, kArcFileOpen when a volume is missing, kCannotRead when the archive breaks off,
    ///         kHeaderCrc, kHeaderBroken, kPasswordFile; an end stays
    ReturnCode next(PackedFile& file);

private:
    ReturnCode openVolume(std::size_t index);
    ReturnCode nextBlock(Block& block);
    void joinParts(PackedFile& file);

    VolumeSet& volumes_;
    Volume volume_;
    Place place_;
    ReturnCode ended_ = kOk;
};

}  // namespace archiver::rar
