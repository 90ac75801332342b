#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "archivers/unpacking/job_line.h"
#include "archivers/unpacking/member_walk.h"
#include "archivers/unpacking/password_attempts.h"
#include "archivers/unpacking/progress_meter.h"
#include "archivers/unpacking/unpacker.h"

namespace archiver {

/// What unpacking, testing and printing share: the walk over the chosen members, passwords, threads, reports in the
/// order of the members, progress and cancel.
class MemberRun {
public:
    MemberRun(ArchiveReader& reader, const MemberFilter& chosen, std::string_view password, unsigned threads,
              UnpackEvents& events);

    [[nodiscard]] JobSurroundings& around() noexcept { return around_; }
    [[nodiscard]] ProgressMeter& meter() noexcept { return meter_; }
    [[nodiscard]] MemberWalk& walk() noexcept { return walk_; }

    /// Called with each job that is about to be told.
    void onFinished(std::function<void(const MemberJob&)> call) { onFinished_ = std::move(call); }
    /// Bytes of an encrypted member are given out only after a pass that showed the password to be right.
    void proveFirst() noexcept { proveFirst_ = true; }

    /// Goes to the next chosen member.
    /// @return false at the end of the archive and of the run
    bool next(Member& member);
    /// Tells that the current member begins. @return false when that cancelled the run
    bool begin(const Member& member, const std::filesystem::path& file);
    /// Unpacks the current member, now or on a thread, and tells it in its turn.
    void process(std::unique_ptr<MemberJob> job);
    /// Tells, in its turn, what needs no unpacking any more.
    void tell(std::unique_ptr<MemberJob> job);
    /// Unpacks the current member's data to memory.
    /// @return kOk; kLongFileName when it is above `most` bytes; what reading it came to
    ReturnCode readSmall(const Member& member, std::size_t most, std::string& data);
    /// Waits until all jobs are finished and told.
    void settle();
    /// Ends the run; the first code counts.
    void end(ReturnCode code);
    [[nodiscard]] bool ended() const noexcept { return endCode_.has_value(); }

    /// What the run came to; all is settled before.
    UnpackSummary summary();

private:
    ReturnCode performHere(MemberJob& job);
    ReturnCode performEncrypted(MemberJob& job);
    void tellFront();
    void tellDone();
    void retryWithPasswords();
    void add(std::unique_ptr<MemberJob> job);

    UnpackEvents& events_;
    JobSurroundings around_;
    ProgressMeter meter_;
    MemberWalk walk_;
    PasswordAttempts passwords_;
    std::function<void(const MemberJob&)> onFinished_;
    UnpackSummary summary_;
    std::optional<ReturnCode> endCode_;
    bool proveFirst_ = false;
    bool severalPasswords_ = false;  ///< members are encrypted with different ones: each is tried on this thread
    JobLine line_;                   ///< the last member: its threads end before the rest goes
};

}  // namespace archiver
