#pragma once
#include <cstdint>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/unpacking/target_system.h"
#include "archivers/unpacking/unpack_events.h"
#include "archivers/unpacking/unpack_options.h"

namespace archiver {

/// What a run came to.
struct UnpackSummary {
    ReturnCode code = kOk;  ///< of what ended the run early, else of the first member that failed or was refused
    std::uint64_t chosen = 0;
    std::uint64_t unpacked = 0;  ///< files, links and tested members
    std::uint64_t skipped = 0;
    std::uint64_t refused = 0;
    std::uint64_t failed = 0;
    std::uint64_t bytes = 0;
    std::string password;  ///< UTF-8, the one that opened encrypted members; empty when there was none
};

/// Unpacks the chosen members below a folder, and nothing outside it, whatever they are called.
///
/// A member that is damaged, refused or cannot be written is reported, and the others go on; the run ends early when
/// the archive cannot be read further, the disk is full, or it is cancelled. A file that is there is replaced only when
/// the new one is whole, so a failure never costs it. Memory does not grow with what headers claim.
///
/// kNotExist when no member was chosen.
/// @param password  UTF-8, tried first on encrypted members; empty for none
UnpackSummary unpackMembers(ArchiveReader& reader, const MemberFilter& chosen, const UnpackOptions& options,
                            std::string_view password, TargetSystem& system, UnpackEvents& events);

/// Unpacks the chosen members to nowhere and checks them.
UnpackSummary testMembers(ArchiveReader& reader, const MemberFilter& chosen, std::string_view password,
                          UnpackEvents& events);

/// Hands the chosen members' bytes to `sink`, one after the other; kUserCancel when it has enough.
UnpackSummary printMembers(ArchiveReader& reader, const MemberFilter& chosen, std::string_view password,
                           UnpackEvents& events, const DataSink& sink);

}  // namespace archiver
