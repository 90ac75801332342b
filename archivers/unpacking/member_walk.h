#pragma once
#include <cstdint>
#include <functional>

#include "archivers/unpacking/progress_meter.h"
#include "archivers/unpacking/unpack_options.h"

namespace archiver {

/// A reader that knows at which member it stands, and walks to the chosen ones.
class MemberWalk {
public:
    MemberWalk(ArchiveReader& reader, const MemberFilter& chosen, ProgressMeter& meter)
        : reader_(reader), chosen_(chosen), meter_(meter) {}

    /// Goes to the next chosen member.
    /// @return kOk; kNoMoreEntries; kUserCancel once the run has been stopped; what makes the archive end here
    ReturnCode next(Member& member);
    ReturnCode restart();

    /// What the members of an archive come to by their headers.
    struct Totals {
        std::uint64_t members = 0;  ///< chosen
        std::uint64_t bytes = 0;    ///< of those that count; at most 2^64-1
    };
    /// One walk to the end and back to the start. An error in it is left to the walk that follows.
    /// @return kOk; kUserCancel; why the reader does not go back
    ReturnCode count(const MemberFilter& counts, Totals& totals);

    /// Of the member that `next` gave last.
    [[nodiscard]] std::uint64_t index() const noexcept { return index_; }
    /// Goes, by way of the start where needed, to a member that was given before; it is the current one then.
    ReturnCode goTo(std::uint64_t index);

    [[nodiscard]] ArchiveReader& reader() noexcept { return reader_; }

private:
    ReturnCode step(Member& member);
    void passOver(const Member& member);

    ArchiveReader& reader_;
    const MemberFilter& chosen_;
    ProgressMeter& meter_;
    std::uint64_t count_ = 0;  ///< members given since the start
    std::uint64_t index_ = 0;
};

}  // namespace archiver
