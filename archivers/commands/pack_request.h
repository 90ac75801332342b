#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "archivers/convention/return_codes.h"
#include "archivers/formats/archive_reader.h"
#include "archivers/packing/pack_events.h"

namespace archiver {

/// What a line that makes an archive, or adds to one, says beyond the archive. Texts are UTF-8.
struct PackRequest {
    enum class Mode : std::uint8_t {
        kAdd,      ///< what is there under the same name is replaced
        kUpdate,   ///< only by what is newer; new names are added
        kFreshen,  ///< only names that are there, by what is newer
    };
    Mode mode = Mode::kAdd;
    bool move = false;                    ///< sources are removed once they are safe in the archive
    std::filesystem::path base{};         ///< names are relative to it; empty: the current folder
    std::vector<std::string> names{};     ///< files, folders and patterns, as given; none: everything in the base
    std::vector<std::string> excluded{};  ///< patterns for names in the archive
    bool recurse = false;                 ///< named folders are taken with all that lies below
    bool searchBelow = false;             ///< each name is looked for in all folders below the base
    bool hidden = false;                  ///< hidden and system files are taken as well
    bool folderEntries = false;           ///< folders become members of their own
    bool keepFolders = true;              ///< false: members are named by the last part alone
    int method = 0;                       ///< the language's own number
    int headerLevel = 0;                  ///< likewise
};

/// Follows a command that makes or changes an archive. As PackEvents: all calls come from the thread that works.
class ChangeEvents : public PackEvents {
public:
    /// What will be packed; before the first member begins.
    virtual void total(std::uint64_t members, std::uint64_t bytes) = 0;
    /// A member leaves the archive.
    virtual void deleted(const Member& member) = 0;
    /// The new archive is whole and takes the old one's place. @return false to cancel
    virtual bool replacing() = 0;
};

struct Command;

/// Makes or changes the archive that a command names; its paths are absolute.
/// @param threads  that pack; 0: as many as there are processors
/// @return kOk; with any other code but those of sources that were left out, the archive is as it was
using ChangeFunction = ReturnCode (*)(const Command& command, unsigned threads, ChangeEvents& events);

}  // namespace archiver
