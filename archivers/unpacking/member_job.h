#pragma once
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "archivers/unpacking/member_places.h"
#include "archivers/unpacking/target_system.h"
#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// One chosen member on its way to its report.
struct MemberJob {
    Member member;
    std::filesystem::path file;  ///< for people
    Place place;
    bool toTarget = false;               ///< its bytes go to a file at `place`; else nowhere
    std::uint64_t index = 0;             ///< of the member in the archive
    std::uint64_t expectedSize = 0;      ///< that is worth preparing for
    std::unique_ptr<DetachedData> data;  ///< what a worker unpacks; null: the caller's thread has done it
    bool mayRetry = false;               ///< a thread tries it with a password that opened another member
    std::uint64_t cost = 0;              ///< bytes of memory it may take
    MemberOutcome outcome = MemberOutcome::kUnpacked;
    ReturnCode code = kOk;
    std::atomic<std::uint64_t> bytes{0};  ///< unpacked
    std::atomic<bool> done{false};
};

/// What the jobs of a run have in common. Any thread may use it.
struct JobSurroundings {
    TargetFolder* target = nullptr;
    bool restoreAttributes = false;
    std::string webMark;
    bool writeBehind = false;          ///< large members may be written by threads of their own
    bool packedAsAWhole = false;       ///< headers and members are one packed stream; sizes say nothing of that
    const DataSink* output = nullptr;  ///< where bytes go that go to no file; null: nowhere
    std::atomic<bool> stop{false};     ///< nothing more is to be written
    std::atomic<std::uint64_t> bytes{0};
};

/// Unpacks a member: ArchiveReader::read, DetachedData::read.
using ReadFunction = std::function<ReturnCode(const DataSink& sink)>;
/// Asked with every piece. @return false to stop
using GoOn = std::function<bool()>;

/// Unpacks, writes, and gives the file its name when all was good. The file is begun with its first byte, so that a
/// wrong password costs nothing. Never throws.
/// @param toMemory  a member of at most so many bytes is only unpacked: it is in `job.data` then, whence any thread may
///                  write it. Whatever its header claims, a larger one is written as it comes
ReturnCode performJob(MemberJob& job, JobSurroundings& around, const ReadFunction& read, const GoOn& goOn,
                      std::size_t toMemory = 0);

/// What a member gives its file.
ItemProperties propertiesOf(const Member& member, bool restoreAttributes, std::string_view webMark);

}  // namespace archiver
