#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "archivers/unpacking/member_run.h"

namespace archiver {

/// The symbolic links of a run. They are made when all else is written: until then no link of the archive stands in the
/// way of any file, and it is known which names are links.
class DeferredLinks {
public:
    DeferredLinks(MemberRun& run, MemberPlaces& places, TargetFolder& target)
        : run_(run), places_(places), target_(target) {}

    /// @param place   that MemberPlaces has given the link
    /// @param target  as stored
    /// @return kOk; kNotFilename for a link that leads out: its place stays a link's, so that nothing comes below it
    ReturnCode add(const Member& member, const Place& place, std::string_view target);

    /// Makes and tells them, in the order they came.
    void make();

private:
    /// As little as a report needs: an archive can hold a million.
    struct Link {
        std::string member, target;  ///< names as stored
        std::string name;            ///< below the target
        std::string leadsTo;         ///< a member's name
        std::uint64_t key = 0;
        std::optional<Moment> written;
        bool renamed = false, replace = false;
    };
    /// What becomes of one link.
    struct End {
        MemberOutcome outcome = MemberOutcome::kLinkMade;
        ReturnCode code = kOk;
    };
    End makeOne(std::size_t index);
    ReturnCode copyInstead(const Link& link);

    MemberRun& run_;
    MemberPlaces& places_;
    TargetFolder& target_;
    std::vector<Link> links_;
    std::unordered_map<std::uint64_t, std::size_t> byKey_;  ///< the last link of each place
};

}  // namespace archiver
