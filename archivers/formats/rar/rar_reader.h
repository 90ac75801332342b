#pragma once
#include <filesystem>
#include <memory>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// Opens a RAR archive of generation 3 to 5: also behind a self-extracting program of up to 2 MiB, and also the first
/// of several volumes, the others of which lie beside it.
///
/// A member that goes on in other volumes is one member. kArcFileOpen stands in place of the members of a volume that
/// is missing, and `read` answers it for a member that is not complete; a member that began in a volume before the one
/// that was opened gives kCannotRead. Links of RAR 3 and 4 have their target as bytes, those of RAR 5 none; there, a
/// copy of another member counts as a hard link to it. Members that are packed solid unpack in any order, and fast in
/// their own. `read` answers kPasswordFile for encrypted members and those packed with them, kMethod for what cannot be
/// unpacked: methods before RAR 2.9, dictionaries above 64 MiB, filters that are no standard ones; kHuffmanCode for
/// packed data that makes no sense, and for all that is packed solid behind it.
/// @return kNotFindArcFile, kArcFileOpen (also for folders), kFileStyle when it is no RAR archive, kPasswordFile when
///         the headers are encrypted, kHeaderCrc and kHeaderBroken when the first header is damaged, kCannotRead
OpenResult openRar(const std::filesystem::path& file);

/// Likewise, for a file that is open.
/// @param path  its name, beside which the other volumes are looked for; empty when it has none
OpenResult openRar(std::unique_ptr<InputFile> file, const std::filesystem::path& path);

}  // namespace archiver
