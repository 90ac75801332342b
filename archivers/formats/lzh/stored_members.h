#pragma once
#include <cstdint>
#include <vector>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::lzh {

/// A member where it lies in an archive.
struct StoredMember {
    Member member;             ///< without a name when its header has none
    std::uint64_t offset = 0;  ///< of its header
    std::uint64_t end = 0;     ///< of its packed bytes
};

/// All members of an archive, to be copied as they are.
/// @param start  of the first header: what is before is a self-extracting program. 0 for an archive without members
/// @return kOk; also for an archive without members, which is its end mark alone; kFileStyle for what is no archive;
///         kHeaderCrc, kHeaderBroken for a damaged one, also where it ends within a member; kCannotRead
ReturnCode readStoredMembers(const InputFile& file, std::uint64_t& start, std::vector<StoredMember>& members);

}  // namespace archiver::lzh
