#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/unpacking/deferred_links.h"
#include "archivers/unpacking/free_room.h"
#include "archivers/unpacking/member_places.h"
#include "archivers/unpacking/member_run.h"
#include "archivers/unpacking/unpacker.h"

namespace archiver {

/// One call of unpackMembers.
class Unpacking {
public:
    Unpacking(ArchiveReader& reader, const MemberFilter& chosen, const UnpackOptions& options,
              std::string_view password, TargetSystem& system, UnpackEvents& events);

    UnpackSummary run();

private:
    bool openTarget();
    bool countFirst();
    void unpack(Member& member);
    void makeFolder(Member& member);
    void unpackFile(Member& member);
    void makeHardLink(Member& member);
    void deferLink(Member& member);
    void finishFolders();

    bool isLeftOut(const Member& member) const;
    bool isGo(Member& member, const Place& place);
    ReturnCode linkTo(const Place& place, const MemberPlaces::Known& existing);
    void tell(Member& member, const Place& place, MemberOutcome outcome, ReturnCode code);
    std::unique_ptr<MemberJob> jobFor(Member&& member, const Place& place) const;

    /// A folder that gets its times when all is written in it.
    struct MadeFolder {
        std::string name;
        std::optional<Moment> written, created, accessed;
        std::uint8_t attributes = 0;
    };

    ArchiveReader& reader_;
    const UnpackOptions& options_;
    TargetSystem& system_;
    UnpackEvents& events_;
    std::unique_ptr<TargetFolder> target_;
    std::optional<MemberPlaces> places_;
    std::optional<FreeRoom> room_;
    std::optional<DeferredLinks> links_;
    std::vector<MadeFolder> folders_;
    bool counted_ = false;  ///< the whole archive was found to fit
    MemberRun run_;         ///< the last member: its threads end before the target goes
};

}  // namespace archiver
