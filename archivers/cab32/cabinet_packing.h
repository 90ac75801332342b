#pragma once
#include <filesystem>
#include <vector>

#include "archivers/commands/command.h"
#include "archivers/formats/cab/cabinet_layout.h"
#include "archivers/packing/packing_files.h"
#include "archivers/packing/source_system.h"

namespace archiver {

/// Makes a cabinet of files, in place of one that is there, which stays until the new one is whole. Folders among the
/// items are passed over: a cabinet has none.
///
/// A file that cannot be opened or read is warned of, and the others are packed. Files are read as long as they were
/// found.
/// @param items  what is packed, in this order
/// @param threads  that pack; 0: as many as there are processors
/// @return kOk; kFileOpen when a file was left out; kNotExist when there is no file at all; before anything is packed
///         kTooManyFiles, kTooBig and kLongFileName, when no cabinet can hold the files or their names; kTooBig beyond
///         4 GiB; kUserCancel; the codes of ArchiveReplacement. With all codes but the first two, and with kFileOpen
///         when nothing could be read, nothing has changed
ReturnCode packCabinet(const std::filesystem::path& archive, const std::vector<SourceItem>& items, CabinetMethod method,
                       unsigned threads, SourceSystem& sources, PackingFiles& files, ChangeEvents& events);

/// What the library's lines do that make a cabinet, as CommandLanguage::change wants it.
ReturnCode changeCabinet(const Command& command, unsigned threads, ChangeEvents& events);

}  // namespace archiver
