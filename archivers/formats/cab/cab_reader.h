#pragma once
#include <filesystem>
#include <memory>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// Opens a cabinet: also behind a self-extracting program, and also any one of a set, whose others are looked for
/// beside it by the names that they have for each other.
///
/// Members come in the order of their data, whatever order the cabinet lists them in: then each folder (a run of
/// members that are packed together) is unpacked once. Reading one after the other is fast; going back unpacks a folder
/// from its beginning. A member's packed size is its share of its folder's by its original size, as no other is stored;
/// its checksum is 0, its method "MSZIP", "LZX", "Quantum", "None" or "Unknown". Names have their separators as stored.
///
/// `read` answers kArcFileOpen for a member that goes on in a cabinet that is not there, kCannotRead for one that began
/// in such a cabinet and when the file ends early, kFileCrc and kHuffmanCode for damaged data (also for the members
/// behind it in the same folder), kHeaderBroken for a member whose place overlaps another's, kMethod.
/// @return kNotFindArcFile, kArcFileOpen (also for folders), kFileStyle when it is no cabinet, kHeaderBroken,
///         kTooManyFiles, kCannotRead
OpenResult openCab(const std::filesystem::path& file);

/// Likewise, for a file that is open.
/// @param path  its name, beside which the others of its set are looked for; empty when it has none
OpenResult openCab(std::unique_ptr<InputFile> file, const std::filesystem::path& path);

}  // namespace archiver
