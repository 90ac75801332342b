#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "archivers/formats/input_file.h"
#include "archivers/formats/zip/member_fields.h"

namespace archiver::zip {

/// An archive that holds one encrypted member of another one, made while it is read: headers of our own around the
/// packed bytes where they lie.
///
/// The library that decrypts is given this instead of the archive: opening costs the same whether the archive has ten
/// members or a million; another member's odd header does no harm; and what stands in front of or behind the archive
/// does not matter.
///
/// Its headers say "deflated" whatever the member is, for the library is asked for the packed bytes alone: it would
/// neither look at the authentication code of what it unpacks itself, nor leave out the checksum that AE-2 does not
/// have. Where it expects the checksum and the time, they hold the byte that proves a password of the traditional
/// encryption.
class MemberArchive {
public:
    /// @param packed  where the member's packed bytes start in `file`; all of them must be there
    MemberArchive(const InputFile& file, std::uint64_t packed, const MemberData& data);

    [[nodiscard]] std::uint64_t size() const noexcept;

    /// Reads from `offset` on, fewer bytes than asked for only at the end.
    /// @return false when the file cannot be read
    [[nodiscard]] bool readAt(std::uint64_t offset, std::span<char> into, std::size_t& got) const noexcept;

private:
    void writeHead(const MemberData& data);
    void writeTail(std::size_t directorySize);

    const InputFile& file_;
    std::uint64_t packed_;
    std::uint64_t packedSize_;
    std::string head_;  ///< directory and local header
    std::string tail_;  ///< end record
};

}  // namespace archiver::zip
