#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "archivers/packing/pack_events.h"
#include "archivers/packing/source_system.h"

namespace archiver {

/// Folders that were found for a command that moves, whether they are members or not.
using MovedFolders = std::vector<SourceItem>;

/// A source that is safe in an archive.
struct MovedSource {
    const SourceItem* item;
    std::uint64_t size;  ///< bytes of it that are in the archive
};

/// Removes the sources of a move: files that are still as they were packed, then the folders that have become empty by
/// that, and those that are members. What cannot be removed is warned of.
void removeMoved(std::span<const MovedSource> moved, const MovedFolders& folders, SourceSystem& system,
                 PackEvents& events);

}  // namespace archiver
