#pragma once
#include <vector>

#include "archivers/commands/command.h"
#include "archivers/commands/moved_sources.h"
#include "archivers/packing/source_system.h"

namespace archiver {

/// Finds what a command packs, in the order of its names, each name in the archive once. What is not there, or cannot
/// be listed, is warned of, as are hidden files that the command does not take though it names them.
/// @param command  with absolute paths; the archive itself is never among the items
/// @param folders  gets all folders among them when the command moves
/// @return kOk; kNotExist when a name gave nothing, kSameNameFile when two files would get one name, kCannotRead for a
///         folder that cannot be listed: the others are packed nevertheless
ReturnCode findSources(const Command& command, SourceSystem& system, PackEvents& events, std::vector<SourceItem>& items,
                       MovedFolders& folders);

}  // namespace archiver
