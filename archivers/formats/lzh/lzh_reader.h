#pragma once
#include <filesystem>
#include <memory>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// Opens an LZH archive: headers of levels 0 to 3, also behind a self-extracting program of up to 512 KiB, by LHA,
/// LHarc, LArc and PMarc.
///
/// A member's method is the text of its header with its hyphens, such as "-lh5-", and its checksum the CRC-16 as
/// stored. Folders ("-lhd-") end with a separator; those without a name are passed over. Symbolic links are members
/// without bytes; their target is not told. From archives of the Macintosh `read` gives the data fork alone, so fewer
/// bytes than the member's original size, which counts the system's envelope around it.
///
/// `next` ends with kHeaderCrc or kHeaderBroken at a damaged header, behind which no other can be found, and with
/// kHeaderBroken when the file ends within the last member. `read` answers kMethod for methods that nobody kept
/// ("-lh2-", "-lh3-") or knows, kHuffmanCode, kFileCrc, kCannotRead when the file ends within the member.
/// @return kNotFindArcFile, kArcFileOpen (also for folders), kFileStyle when it is no LZH archive, kHeaderCrc and
///         kHeaderBroken when its first header is damaged, kCannotRead
OpenResult openLzh(const std::filesystem::path& file);

/// Likewise, for a file that is open.
OpenResult openLzh(std::unique_ptr<InputFile> file);

}  // namespace archiver
