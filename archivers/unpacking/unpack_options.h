#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// What happens to a file that is there already.
enum class ExistingFiles : std::uint8_t {
    kAsk,      ///< UnpackEvents::askReplace decides
    kReplace,  ///< also when it is write-protected
    kKeep,
    kNumber,  ///< the new file gets a free name, such as "a (2).txt"
};

/// How members become files.
struct UnpackOptions {
    std::filesystem::path target;   ///< absolute; made when it is not there, with the folders above it
    std::filesystem::path archive;  ///< whose mark of the Web passes to every file; empty: none does
    bool keepFolders = true;        ///< false: last parts of names only, folder members are passed over
    ExistingFiles existing = ExistingFiles::kAsk;
    bool onlyNewer = false;     ///< a file that is there and newer or as old (to 2 seconds) is kept without a question
    bool onlyExisting = false;  ///< members whose file is not there are passed over
    bool onlyMissing = false;   ///< members whose file is there are passed over
    bool skipHiddenAndSystem = false;
    bool restoreAttributes = true;
    bool checkDiskSpace = true;
    bool blanksToUnderscores = false;
    bool lowerCaseNames = false;
    unsigned threads = 0;  ///< 0: as many as the machine has processors, at most 16
};

/// Chooses members by what their header says.
using MemberFilter = std::function<bool(const Member& member)>;

}  // namespace archiver
