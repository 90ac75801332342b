#include "archivers/unpacking/deferred_links.h"

#include <memory>
#include <utility>

#include "archivers/unpacking/link_target.h"
#include "archivers/unpacking/utf8_path.h"

namespace archiver {

ReturnCode DeferredLinks::add(const Member& member, const Place& place, std::string_view target) {
    // From the link's folder as stored: with all members in one folder the names still tell what belongs together.
    const TargetName own = targetNameOf(member.name, {}, places_.rules());
    std::optional<std::string> leadsTo = nameLinkedTo(own.name, target, places_.rules());
    if (!leadsTo || places_.known(*leadsTo).code != kOk) return kNotFilename;
    Link& link = links_.emplace_back();
    link.member = member.name;
    link.target = target;
    link.name = place.name;
    link.leadsTo = std::move(*leadsTo);
    link.key = place.key;
    link.written = member.written;
    link.renamed = place.renamed;
    link.replace = place.replace;
    return kOk;
}

void DeferredLinks::make() {
    for (std::size_t index = 0; index < links_.size(); ++index) byKey_[links_[index].key] = index;
    for (std::size_t index = 0; index < links_.size(); ++index) {
        if (!run_.meter().poll()) return run_.end(kUserCancel);
        const Link& link = links_[index];
        const End end = makeOne(index);
        auto job = std::make_unique<MemberJob>();
        job->member.name = link.member;
        job->member.kind = MemberKind::kSymbolicLink;
        job->member.linkTarget = link.target;
        job->member.written = link.written;
        job->outcome = end.outcome;
        job->code = end.code;
        job->place.renamed = link.renamed;
        if (end.outcome != MemberOutcome::kRefused) job->file = places_.shown(link.name);
        run_.tell(std::move(job));
    }
}

DeferredLinks::End DeferredLinks::makeOne(std::size_t index) {
    const Link& link = links_[index];
    // A later member of the very same name has its place.
    if (byKey_.at(link.key) != index || places_.use(link.key) != NameUse::kLink) {
        return {MemberOutcome::kSkipped, kSameNameFile};
    }
    const MemberPlaces::Known to = places_.known(link.leadsTo);
    if (places_.isBelowLink(to.name)) return {MemberOutcome::kRefused, kNotFilename};
    ReturnCode code =
        target_.makeSymbolicLink(pathOfUtf8(link.name), pathOfUtf8(relativeWay(link.name, to.name)), link.replace);
    if (code == kNotSupport) {
        code = copyInstead(link);
        if (code == kNotSupport) return {MemberOutcome::kSkipped, code};
        if (code == kOk) return {MemberOutcome::kUnpacked, code};
    }
    return {code == kOk ? MemberOutcome::kLinkMade : MemberOutcome::kFailed, code};
}

/// @return kNotSupport when the link does not lead to a file of the run
ReturnCode DeferredLinks::copyInstead(const Link& link) {
    MemberPlaces::Known to = places_.known(link.leadsTo);
    // A link to a link: at most as many as systems follow.
    for (int hops = 0; to.taken.use == NameUse::kLink && hops < 40; ++hops) {
        const auto next = byKey_.find(to.key);
        if (next == byKey_.end()) return kNotSupport;
        to = places_.known(links_[next->second].leadsTo);
        if (places_.isBelowLink(to.name)) return kNotSupport;
    }
    if (to.taken.use != NameUse::kWritten || !to.taken.sameName) return kNotSupport;
    return target_.copyFile(pathOfUtf8(link.name), pathOfUtf8(to.name), link.replace,
                            [this] { return run_.meter().poll(); });
}

}  // namespace archiver
