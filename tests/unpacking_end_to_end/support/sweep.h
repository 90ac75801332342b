#pragma once
#include <cstdint>
#include <functional>
#include <string>

#include "languages/support/library_run.h"

namespace archiver::testing {

/// What unpacking one archive into a fresh folder gave.
struct Unpacked {
    std::int32_t code = 0;
    std::string output;
    Files files;  ///< below the target
};

/// What an archive lets a reader find out about a damaged byte.
struct Evidence {
    enum class Sums : std::uint8_t {
        kOfMembers,
        kOfTheWhole,  ///< known at the end only: what was unpacked until then stays, and the run is told to be damaged
        kNone,
    };
    Sums sums = Sums::kOfMembers;
    bool sizes = true;         ///< else a missing end cannot be seen
    bool end = true;           ///< else an archive cut between two members looks whole
    bool names = true;         ///< else members can come by other names
    std::string instead = {};  ///< the only file, when nothing tells any more that there are members
};

struct Sweep {
    std::string bytes;  ///< the archive
    Files members;      ///< that it holds
    Evidence evidence;
    std::function<bool(std::int32_t code)> isKnownCode;
    std::function<Unpacked(const std::string& bytes)> unpack;
};

/// Cuts an archive at every 97th byte and spoils every 101st: closer in a small one and wider in a large one. Expects
/// of each that the call comes back in time with a code of the library's; that every file that is left is whole, or
/// named in the output beside a code that is no success; that success means that all is there.
void sweep(const Sweep& sweep);

/// A name that only the libraries give to a file, while it is not whole.
bool isTemporary(const std::string& name);

/// Removes a folder with all in it, also what is write-protected.
void removeFolder(const std::filesystem::path& folder);

}  // namespace archiver::testing
