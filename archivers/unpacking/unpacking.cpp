#include "archivers/unpacking/unpacking.h"

#include <algorithm>
#include <utility>

#include "archivers/unpacking/utf8_path.h"

namespace archiver {
namespace {

constexpr std::size_t kLongestLinkTarget = 4096;

/// A folder in either form that a header has for it.
MemberKind kindOf(const Member& member) {
    const bool folder = member.kind == MemberKind::kFile && (member.attributes & attribute::kFolder) != 0;
    return folder ? MemberKind::kFolder : member.kind;
}

bool hasBytes(const Member& member) { return kindOf(member) == MemberKind::kFile; }

}  // namespace

Unpacking::Unpacking(ArchiveReader& reader, const MemberFilter& chosen, const UnpackOptions& options,
                     std::string_view password, TargetSystem& system, UnpackEvents& events)
    : reader_(reader),
      options_(options),
      system_(system),
      events_(events),
      run_(reader, chosen, password, options.threads, events) {
    run_.onFinished([this](const MemberJob& job) {
        if (job.toTarget && job.code == kOk) places_->setWritten(job.place);
    });
}

UnpackSummary Unpacking::run() {
    if (!reader_.facts().listedByHeaders || countFirst()) {
        Member member;
        while (run_.next(member)) {
            if (!target_ && !openTarget()) break;
            unpack(member);
        }
        run_.settle();
        if (links_ && !run_.around().stop.load()) links_->make();
        run_.settle();
        finishFolders();
    }
    return run_.summary();
}

bool Unpacking::openTarget() {
    const ReturnCode code = system_.open(options_.target, target_);
    if (code != kOk) {
        run_.end(code);
        return false;
    }
    run_.around().target = target_.get();
    run_.around().restoreAttributes = options_.restoreAttributes;
    if (!options_.archive.empty()) run_.around().webMark = system_.webMark(options_.archive);
    places_.emplace(*target_, options_, events_,
                    MemberPlaces::Calls{[this] { run_.settle(); },
                                        [this](const Member& member, const std::string& folder) {
                                            Member needs = member;
                                            Place place;
                                            place.name = folder;
                                            tell(needs, place, MemberOutcome::kFolderMade, kOk);
                                        }});
    room_.emplace(*target_, events_);
    links_.emplace(run_, *places_, *target_);
    return true;
}

/// Where headers are quickly had, all is counted first: for the progress, and for the question whether it fits. The sum
/// of all claims fits nearly always; where it does not, a second count leaves out what will not be written.
bool Unpacking::countFirst() {
    MemberWalk::Totals totals;
    const auto counted = [&](const MemberFilter& counts) {
        const ReturnCode code = run_.walk().count(counts, totals);
        if (code != kOk) run_.end(code);
        return code == kOk;
    };
    if (!counted([this](const Member& member) { return hasBytes(member) && !isLeftOut(member); })) return false;
    run_.meter().setTotal(totals.bytes);
    if (totals.members == 0) return true;  // the walk that follows finds out why
    if (!openTarget()) {
        // Somebody was meant to get these members.
        return false;
    }
    counted_ = true;
    if (!options_.checkDiskSpace || room_->fits(totals.bytes)) return true;
    const MemberFilter wanted = [this](const Member& member) {
        return hasBytes(member) && !isLeftOut(member) && places_->isWanted(member);
    };
    if (!counted(wanted)) return false;
    if (room_->admit(totals.bytes)) return true;
    run_.end(kDiskSpace);
    return false;
}

bool Unpacking::isLeftOut(const Member& member) const {
    return options_.skipHiddenAndSystem && (member.attributes & (attribute::kHidden | attribute::kSystem)) != 0;
}

std::unique_ptr<MemberJob> Unpacking::jobFor(Member&& member, const Place& place) const {
    auto job = std::make_unique<MemberJob>();
    job->member = std::move(member);
    job->place = place;
    if (!place.name.empty()) job->file = places_->shown(place.name);
    return job;
}

void Unpacking::tell(Member& member, const Place& place, MemberOutcome outcome, ReturnCode code) {
    std::unique_ptr<MemberJob> job = jobFor(std::move(member), place);
    job->outcome = outcome;
    job->code = code;
    run_.tell(std::move(job));
}

/// Tells the member where its place is none.
bool Unpacking::isGo(Member& member, const Place& place) {
    switch (place.verdict) {
        case Place::Verdict::kGo:
            return true;
        case Place::Verdict::kPassOver:
            break;
        case Place::Verdict::kSkip:
            tell(member, place, MemberOutcome::kSkipped, place.code);
            break;
        case Place::Verdict::kRefuse:
            tell(member, place, MemberOutcome::kRefused, place.code);
            break;
        case Place::Verdict::kFail:
            tell(member, place, MemberOutcome::kFailed, place.code);
            break;
        case Place::Verdict::kCancel:
            run_.meter().cancel();
            run_.end(kUserCancel);
            break;
    }
    return false;
}

void Unpacking::unpack(Member& member) {
    if (isLeftOut(member)) {
        if (kindOf(member) == MemberKind::kFolder && !options_.keepFolders) return;
        return tell(member, {}, MemberOutcome::kSkipped, kUserSkip);
    }
    switch (kindOf(member)) {
        case MemberKind::kFile:
            return unpackFile(member);
        case MemberKind::kFolder:
            return makeFolder(member);
        case MemberKind::kSymbolicLink:
            return deferLink(member);
        case MemberKind::kHardLink:
            return makeHardLink(member);
        case MemberKind::kSpecial:
            return tell(member, {}, MemberOutcome::kRefused, kUnknownType);
    }
}

void Unpacking::makeFolder(Member& member) {
    const Place place = places_->makeFolder(member);
    if (!isGo(member, place)) return;
    folders_.push_back({place.name, writtenOf(member), member.created, member.accessed, member.attributes});
    if (place.made) tell(member, place, MemberOutcome::kFolderMade, kOk);
}

void Unpacking::unpackFile(Member& member) {
    const Place place = places_->placeOf(member);
    if (!isGo(member, place)) return;
    if (options_.checkDiskSpace && !counted_ && !room_->admit(member.originalSize)) {
        tell(member, place, MemberOutcome::kFailed, kDiskSpace);
        return run_.settle();  // the run ends when that is told: before anything else is begun
    }
    std::unique_ptr<MemberJob> job = jobFor(std::move(member), place);
    job->toTarget = true;
    job->expectedSize = plausibleSize(job->member);
    if (run_.begin(job->member, job->file)) run_.process(std::move(job));
}

ReturnCode Unpacking::linkTo(const Place& place, const MemberPlaces::Known& existing) {
    const std::filesystem::path name = pathOfUtf8(place.name);
    const std::filesystem::path file = pathOfUtf8(existing.name);
    const ReturnCode code = target_->makeHardLink(name, file, place.replace);
    if (code != kNotSupport) return code;
    return target_->copyFile(name, file, place.replace, [this] { return run_.meter().poll(); });
}

/// A hard link names an earlier member as it is stored; whatever else stands at such a name is not the archive's to
/// give.
void Unpacking::makeHardLink(Member& member) {
    run_.settle();
    const MemberPlaces::Known existing = places_->known(member.linkTarget);
    if (existing.code != kOk || existing.taken.use != NameUse::kWritten || !existing.taken.sameName) {
        return tell(member, {}, MemberOutcome::kRefused, kNotExist);
    }
    const Place place = places_->placeOf(member);
    if (!isGo(member, place)) return;
    // To itself, also by way of a name that fell together with its own.
    if (place.key == existing.key) {
        places_->setWritten(place);
        return tell(member, {}, MemberOutcome::kRefused, kSameNameFile);
    }
    const ReturnCode code = linkTo(place, existing);
    if (code == kOk) places_->setWritten(place);
    tell(member, place, MemberOutcome::kLinkMade, code);
}

void Unpacking::deferLink(Member& member) {
    std::string target = member.linkTarget;
    if (target.empty()) {
        const ReturnCode code = run_.readSmall(member, kLongestLinkTarget, target);
        if (code == kUserCancel) return run_.end(code);
        if (code != kOk) return tell(member, {}, MemberOutcome::kFailed, code);
    }
    const Place place = places_->placeOfLink(member);
    if (!isGo(member, place)) return;
    const ReturnCode code = links_->add(member, place, target);
    if (code != kOk) tell(member, {}, MemberOutcome::kRefused, code);
}

/// The deepest ones first: what is done in a folder changes its time. After a cancel nothing more is done.
void Unpacking::finishFolders() {
    const auto depth = [](const MadeFolder& folder) { return std::ranges::count(folder.name, '/'); };
    std::ranges::stable_sort(folders_, [&](const MadeFolder& a, const MadeFolder& b) { return depth(a) > depth(b); });
    for (const MadeFolder& folder : folders_) {
        if (!run_.meter().poll()) return;
        ItemProperties properties;
        properties.written = folder.written;
        properties.created = folder.created;
        properties.accessed = folder.accessed;
        if (options_.restoreAttributes) properties.attributes = folder.attributes;
        // A folder without its time is still the folder that was wanted.
        static_cast<void>(target_->setProperties(pathOfUtf8(folder.name), properties));
    }
}

}  // namespace archiver
