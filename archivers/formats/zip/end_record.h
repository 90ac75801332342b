#pragma once
#include <cstdint>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::zip {

/// Where an archive's central directory lies. Offsets are from the start of the file.
struct DirectoryPlace {
    std::uint64_t start = 0;
    std::uint64_t claimedEnd = 0;     ///< before it, what is no header is damage; behind it, it is the directory's end
    std::uint64_t limit = 0;          ///< where the end records start; at or behind `claimedEnd`
    std::uint64_t shift = 0;          ///< what to add, modulo 2^64, to the offsets that the directory gives
    std::uint64_t commentOffset = 0;  ///< of the archive's comment
    std::uint16_t commentSize = 0;    ///< bytes that it claims to have
};

struct DirectoryResult {
    ReturnCode code = kOk;
    DirectoryPlace place;
};

/// Finds the central directory by the end record, the Zip64 end record and its locator.
///
/// Bytes may stand in front of the archive, with its offsets adjusted to them or not, and foreign bytes may follow the
/// end record, up to 1 MiB behind its comment. Counts and sizes of the records are claims: what is found is believed
/// only when a directory header stands where they lead.
/// @return kFileStyle when the file is no ZIP archive; kHeaderBroken when it was one; kNotSupport for one volume of
///         several; kCannotRead
/// Source: PKWARE APPNOTE 6.3.10, 4.3.14 to 4.3.16
DirectoryResult findDirectory(const InputFile& file);

}  // namespace archiver::zip
