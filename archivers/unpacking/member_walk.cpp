#include "archivers/unpacking/member_walk.h"

#include <algorithm>
#include <limits>

namespace archiver {
namespace {

/// What a reader passes over so fast that nobody needs to see progress meanwhile.
constexpr std::uint64_t kSmallMember = std::uint64_t{1} << 20;

}  // namespace

ReturnCode MemberWalk::step(Member& member) {
    if (!meter_.poll()) return kUserCancel;
    const ReturnCode code = reader_.next(member);
    if (code == kOk) index_ = count_++;
    return code;
}

/// In an archive where the way to the next member leads through the data of this one, reading the data lets progress be
/// told and a cancel be heard; going on would do the same work in silence.
void MemberWalk::passOver(const Member& member) {
    if (reader_.facts().listedByHeaders || member.originalSize < kSmallMember) return;
    static_cast<void>(reader_.read([this](const char*, std::size_t) { return meter_.poll(); }));
}

ReturnCode MemberWalk::next(Member& member) {
    for (;;) {
        if (const ReturnCode code = step(member); code != kOk) return code;
        if (!chosen_ || chosen_(member)) return kOk;
        passOver(member);
    }
}

ReturnCode MemberWalk::restart() {
    count_ = 0;
    return reader_.restart();
}

ReturnCode MemberWalk::count(const MemberFilter& counts, Totals& totals) {
    totals = {};
    Member member;
    ReturnCode code = next(member);
    for (; code == kOk; code = next(member)) {
        ++totals.members;
        if (!counts(member)) continue;
        totals.bytes += std::min(member.originalSize, std::numeric_limits<std::uint64_t>::max() - totals.bytes);
    }
    return code == kUserCancel ? code : restart();
}

ReturnCode MemberWalk::goTo(std::uint64_t index) {
    if (count_ != 0 && index_ == index) return kOk;
    if (index < count_) {
        if (const ReturnCode code = restart(); code != kOk) return code;
    }
    Member member;
    while (count_ <= index) {
        if (const ReturnCode code = step(member); code != kOk) return code == kNoMoreEntries ? kCannotRead : code;
    }
    return kOk;
}

}  // namespace archiver
