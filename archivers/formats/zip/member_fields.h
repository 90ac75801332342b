#pragma once
#include <cstdint>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/zip/central_directory.h"

namespace archiver::zip {

/// Where and how a member's data is stored.
struct MemberData {
    std::uint64_t localOffset = 0;  ///< as stored; see DirectoryPlace::shift
    std::uint64_t packedSize = 0;
    std::uint64_t originalSize = 0;
    std::uint32_t crc = 0;
    std::uint16_t method = 0;
    bool encrypted = false;
};

/// Turns a header into what the interface tells of a member, and into what reading it takes. Allocates nothing once the
/// member's texts have grown to the archive's longest name.
///
/// A member whose name ends with "/", or whose attributes say so, is a folder. Times come from the NTFS field where
/// there is one, otherwise from the extended timestamp. What an odd extra field should have told stays as the header
/// has it.
void fillMember(const CentralHeader& header, Member& member, MemberData& data);

/// The method's name in at most 7 characters; "Unknown" for one that has none.
const char* methodText(std::uint16_t method) noexcept;

}  // namespace archiver::zip
