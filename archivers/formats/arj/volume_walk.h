#pragma once
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "archivers/formats/arj/header_walk.h"
#include "archivers/formats/arj/part.h"
#include "archivers/formats/arj/volume_set.h"

namespace archiver::arj {

/// Where a member's data lies: one part for each volume that has some of it.
struct MemberParts {
    std::vector<Part> parts;
    ReturnCode state = kOk;  ///< why the parts are not the whole member
};

/// Goes over the headers of a whole set of volumes and brings the parts of members together.
class VolumeWalk {
public:
    VolumeWalk(const std::filesystem::path& first, std::shared_ptr<const InputFile> file);

    /// Finds the first volume's main header. The first call of all.
    /// @return as HeaderWalk::begin
    ReturnCode begin();

    /// Gives the next header of a file or of anything else; that of the first part when there are several.
    /// @return kOk, kNoMoreEntries, kArcFileOpen when a volume is missing, or an error of HeaderWalk. All but kOk stay.
    ReturnCode next(FileHeader& header, MemberParts& member);

    /// Goes back to before the first header.
    ReturnCode rewind();

    /// The main header of the volume that holds the header given last.
    [[nodiscard]] const MainHeader& main() const noexcept { return walk_->main(); }
    /// Where the archive begins in the present volume.
    [[nodiscard]] std::uint64_t start() const noexcept { return walk_->start(); }
    [[nodiscard]] VolumeSet& volumes() noexcept { return volumes_; }

private:
    ReturnCode enter(std::size_t volume);
    void gather(const FileHeader& first, MemberParts& member);
    ReturnCode nextPart(std::size_t volume, FileHeader& part);

    VolumeSet volumes_;
    std::unique_ptr<HeaderWalk> walk_;
    std::size_t volume_ = 0;
    std::size_t attached_ = 0;  ///< up to this volume, the first header belongs to a member that was given
    bool onFirst_ = true;       ///< the present volume's first header comes next
    bool continued_ = false;    ///< the last header's member goes on in the next volume
    ReturnCode end_ = kOk;
};

}  // namespace archiver::arj
