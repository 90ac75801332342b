#pragma once
#include <filesystem>
#include <memory>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// Opens a tar archive, alone or in gzip, bzip2 or compress, or a single file in one of them, which then is the one
/// member. What a file is its content tells, not its name.
/// @return kNotFindArcFile, kArcFileOpen (also for folders), kFileStyle when it is none of these, kHeaderBroken when a
///         compressed file's first bytes are damaged or missing, kCannotRead
OpenResult openTar(const std::filesystem::path& file);

/// Likewise, for a file that is open.
/// @param fileName  UTF-8, without folders: a single member without a name of its own is named after it
OpenResult openTar(std::unique_ptr<InputFile> file, std::string_view fileName);

}  // namespace archiver
