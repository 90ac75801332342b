#pragma once
#include "archivers/commands/command.h"
#include "archivers/packing/packing_files.h"
#include "archivers/packing/source_system.h"

namespace archiver {

/// Numbers of PackRequest::method.
namespace lzh_method {
inline constexpr int kStored = 0;
inline constexpr int kLh5 = 2;
inline constexpr int kLh6 = 3;
inline constexpr int kLh7 = 4;
}  // namespace lzh_method

/// Makes or changes an LZH archive. Members keep their order and their bytes; those that are replaced keep their place,
/// new ones come last. The old archive is whole until the new one takes its place; sources of a move go only when the
/// new archive has been read back. Without a member that is left, the archive goes.
///
/// kNotFindArcFile, kFileStyle and codes of damage for an archive that cannot be changed; kArcReadOnly, kArcFileOpen;
/// kNotExist when there is nothing to do, or a name was not found while others were; kFileOpen when a source could not
/// be read while others were.
ReturnCode changeLzh(const Command& command, unsigned threads, ChangeEvents& events);

/// The same over other files than the system's.
ReturnCode changeLzh(const Command& command, unsigned threads, ChangeEvents& events, SourceSystem& sources,
                     PackingFiles& files);

}  // namespace archiver
