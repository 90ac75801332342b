#include "archivers/convention/opened_archive.h"

#include <utility>

namespace archiver {

namespace {

constexpr std::uint32_t kCheckAllPath = 0x100;       // M_CHECK_ALL_PATH
constexpr std::uint32_t kCheckFileNameOnly = 0x200;  // M_CHECK_FILENAME_ONLY

PatternScope scopeOf(std::uint32_t mode) noexcept {
    if ((mode & kCheckAllPath) != 0) {
        return PatternScope::kWholePath;
    }
    return (mode & kCheckFileNameOnly) != 0 ? PatternScope::kLastPart : PatternScope::kByPattern;
}

/// Sizes are claims: their sum may be beyond what the type holds.
void addUpTo(std::uint64_t& total, std::uint64_t size) noexcept {
    total = size > UINT64_MAX - total ? UINT64_MAX : total + size;
}

}  // namespace

OpenedArchive::OpenedArchive(std::unique_ptr<ArchiveReader> reader, std::filesystem::path file, std::uint32_t mode)
    : reader_(std::move(reader)), file_(std::move(file)), scope_(scopeOf(mode)) {}

std::int32_t OpenedArchive::findFirst(std::string_view utf8Patterns) {
    const bool again = searched();
    patterns_ = WildcardSet(utf8Patterns, scope_);
    originalTotal_ = 0;
    packedTotal_ = 0;
    endCode_ = kEnoughMemory;
    state_ = State::kEnded;
    if (again) {
        const ReturnCode code = reader_->restart();
        if (code != kOk) {
            return end(code);
        }
    }
    endCode_ = kOk;
    return findNext();
}

std::int32_t OpenedArchive::findNext() {
    if (state_ == State::kNotSearched) {
        return kNotSearchMode;
    }
    if (endCode_ != kOk) {
        return endCode_;
    }
    // Unless all goes well there is no member; memory may run out on the way.
    state_ = State::kEnded;
    endCode_ = kEnoughMemory;
    do {
        const ReturnCode code = reader_->next(member_);
        if (code != kOk) {
            return end(code);
        }
    } while (!patterns_.matchesAll() && !patterns_.matches(member_.name));
    addUpTo(originalTotal_, member_.originalSize);
    addUpTo(packedTotal_, member_.packedSize);
    state_ = State::kOnMember;
    return endCode_ = kOk;
}

std::int32_t OpenedArchive::end(std::int32_t code) noexcept {
    state_ = State::kEnded;
    return endCode_ = code;
}

}  // namespace archiver
