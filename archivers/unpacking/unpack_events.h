#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// What became of a member.
enum class MemberOutcome : std::uint8_t {
    kUnpacked,
    kFolderMade,  ///< a folder member, or a folder that members need; not told for one that was there
    kLinkMade,
    kTested,
    kSkipped,  ///< by an option or an answer; the code says why: kMoreFresh, kAlreadyExist, kNotExist, kUserSkip
    kRefused,  ///< its name or its link would leave the target, or it is nothing that can be unpacked
    kFailed,
};

/// One member's end. Told in the order of the members, but for symbolic links, which are made after all other members;
/// on the thread that called the unpacker. A member that a cancel or a full disk kept from its end is not told.
struct MemberReport {
    const Member& member;
    MemberOutcome outcome;
    ReturnCode code = kOk;
    std::filesystem::path file;  ///< where it went, or should have gone; empty for a refused name and when testing
    bool renamed = false;        ///< `file` differs from what the member's name says
};

/// How far the work is.
struct UnpackProgress {
    const Member* member = nullptr;  ///< the one that is worked on, or was finished last
    std::filesystem::path file;
    std::uint64_t memberBytes = 0;   ///< unpacked of it
    std::uint64_t bytes = 0;         ///< unpacked of all members
    std::uint64_t totalBytes = 0;    ///< of all chosen members, by their headers; 0 = not known before the end
    std::uint64_t archiveBytes = 0;  ///< read of the archive
    std::uint64_t archiveSize = 0;
    std::uint64_t members = 0;  ///< finished
};

/// Answers to "replace the file that is there?".
enum class ReplaceAnswer : std::uint8_t { kYes, kNo, kAll, kNone, kNumber, kCancel };

struct ReplaceQuestion {
    std::filesystem::path file;
    std::uint64_t existingSize = 0;
    std::optional<Moment> existingTime;
    const Member& member;
};

/// What the unpacker tells and asks. All calls come on the thread that called the unpacker; none throws.
class UnpackEvents {
public:
    virtual ~UnpackEvents() = default;

    /// A file, or a member that is tested or printed, begins. Several may have begun before the first of them ends.
    /// @return false to cancel
    virtual bool begins(const Member& member, const std::filesystem::path& file) = 0;

    /// Called at least every 50 ms while there is work, and at the end of every member: whoever wants to show windows
    /// lets messages run here.
    /// @return false to cancel: what is half written goes away and the unpacker answers kUserCancel
    virtual bool progress(const UnpackProgress& progress) = 0;

    virtual void ends(const MemberReport& report) = 0;

    virtual ReplaceAnswer askReplace(const ReplaceQuestion& question) = 0;

    /// @param attempt  1, 2 or 3; after that the member fails with kPasswordFile
    /// @return UTF-8; nullopt: no password is to be had, the archive's encrypted members fail without further questions
    virtual std::optional<std::string> askPassword(const Member& member, unsigned attempt) = 0;

    /// The target's disk has too little room. @return true to go on nevertheless
    virtual bool askDiskSpace(std::uint64_t needed, std::uint64_t available) = 0;
};

}  // namespace archiver
