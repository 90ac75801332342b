#pragma once
#include <filesystem>
#include <memory>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// Opens a ZIP archive: also with Zip64 records, with a program or other bytes in front, with a comment and with up to
/// 1 MiB of foreign bytes behind it. Members are listed from the central directory alone, in one pass.
/// @return kNotFindArcFile, kArcFileOpen (also for folders), kFileStyle when it is no ZIP archive, kHeaderBroken when
///         its end or its directory is missing, kNotSupport for one volume of several, kCannotRead
OpenResult openZip(const std::filesystem::path& file);

/// Likewise, for a file that is open.
OpenResult openZip(std::unique_ptr<InputFile> file);

}  // namespace archiver
