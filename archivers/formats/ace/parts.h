#pragma once
#include <cstdint>
#include <memory>
#include <span>

#include "archivers/formats/ace/bit_reader.h"
#include "archivers/formats/ace/cipher.h"
#include "archivers/formats/ace/headers.h"
#include "archivers/formats/ace/volumes.h"

namespace archiver::ace {

/// Where a header stands.
struct Place {
    std::shared_ptr<Volume> volume;
    std::uint64_t offset = 0;
};

/// A member, or the part of one that lies in one volume.
struct Part {
    Place place;  ///< of its header
    FileHeader header;

    /// The place behind its data.
    [[nodiscard]] Place behind() const noexcept;
};

/// Reads the next header of type file in a volume, passing all others.
/// @return kOk, kNoMoreEntries at the volume's end, or an error code
ReturnCode readPart(const Place& place, Part& part);

/// Reads the next header of type file in a volume or in those behind it, as far as they are there.
ReturnCode readPart(VolumeChain& chain, const Place& place, Part& part);

/// Goes from a part that goes on in the next volume to its following part.
/// @param ask  as VolumeChain::next has it
/// @return kOk, kHeaderBroken when the next volume begins with something else, or an error code; `part` stays then
ReturnCode nextPart(VolumeChain& chain, Part& part, bool ask);

/// The packed bytes of a member, all its parts in one row, deciphered.
class PackedData final : public ByteSource {
public:
    /// @param first   the member's first part
    /// @param chain   outlives this
    /// @param cipher  null for a member that is not encrypted
    PackedData(VolumeChain& chain, Part first, std::shared_ptr<const Cipher> cipher);

    std::size_t fill(std::span<char> into) override;

    /// Why there were fewer bytes than the headers claim; kOk when there were not.
    [[nodiscard]] ReturnCode error() const noexcept { return error_; }

    /// Goes on to the member's last part, whose header has its checksum.
    /// @return kOk, or why that cannot be reached
    ReturnCode goToLast();

    [[nodiscard]] const Part& part() const noexcept { return part_; }

private:
    bool goToNext();

    VolumeChain& chain_;
    Part part_;
    std::uint64_t done_ = 0;  ///< bytes of this part
    std::shared_ptr<const Cipher> cipher_;
    Decryption decryption_;
    ReturnCode error_ = kOk;
};

}  // namespace archiver::ace
