#include "archivers/unpacking/existing_files.h"

#include "archivers/formats/moments.h"

namespace archiver {
namespace {

/// The steps in which the coarsest file systems and archives keep times.
constexpr std::uint64_t kTolerance = 2;

bool isAsNew(const std::optional<Moment>& existing, const std::optional<Moment>& member) {
    if (!existing || !member) return false;
    if (existing->seconds >= member->seconds) return true;
    const std::uint64_t seconds =
        static_cast<std::uint64_t>(member->seconds) - static_cast<std::uint64_t>(existing->seconds);
    return seconds < kTolerance || (seconds == kTolerance && existing->nanoseconds >= member->nanoseconds);
}

}  // namespace

std::optional<Moment> writtenOf(const Member& member) noexcept {
    if (member.written) return member.written;
    return momentOfDosStamp({member.dosDate, member.dosTime});
}

std::optional<ReturnCode> ExistingFileRules::skipOf(const Member& member,
                                                    const std::optional<ExistingItem>& existing) const {
    if (!existing) return options_.onlyExisting ? std::optional(kNotExist) : std::nullopt;
    if (options_.onlyMissing) return kAlreadyExist;
    if (options_.onlyNewer && isAsNew(existing->written, writtenOf(member))) return kMoreFresh;
    if (options_.existing == ExistingFiles::kKeep) return kAlreadyExist;
    return std::nullopt;
}

ExistingFileRules::Decision ExistingFileRules::decide(const Member& member, const std::filesystem::path& file,
                                                      const std::optional<ExistingItem>& existing) {
    if (const auto skip = skipOf(member, existing)) return {Step::kSkip, *skip};
    if (!existing) return {Step::kWrite};
    if (options_.existing == ExistingFiles::kReplace) return {Step::kReplace};
    if (options_.existing == ExistingFiles::kNumber) return {Step::kNumber};
    const ReplaceAnswer answer =
        remembered_ ? *remembered_ : events_.askReplace({file, existing->size, existing->written, member});
    switch (answer) {
        case ReplaceAnswer::kAll:
            remembered_ = answer;
            [[fallthrough]];
        case ReplaceAnswer::kYes:
            return {Step::kReplace};
        case ReplaceAnswer::kNumber:
            return {Step::kNumber};
        case ReplaceAnswer::kCancel:
            return {Step::kCancel, kUserCancel};
        case ReplaceAnswer::kNone:
            remembered_ = answer;
            break;
        case ReplaceAnswer::kNo:
            break;
    }
    return {Step::kSkip, kUserSkip};
}

}  // namespace archiver
