#include "archivers/convention/archive_check.h"

#include <limits>

#include "archivers/convention/abi.h"

namespace archiver {

namespace {

/// How many headers of the file the quickest mode looks at, at most.
constexpr int kRapidHeaders = 3;

bool isFolder(const Member& member) { return (member.attributes & attribute::kFolder) != 0; }

/// @return whether the member's data is as its header says, or can not be told without a password
bool isDataGood(ArchiveReader& reader, const Member& member) {
    if (member.encrypted || isFolder(member)) {
        return true;
    }
    const ReturnCode code = reader.read([](const char*, std::size_t) { return true; });
    return code == kOk || code == kPasswordFile;
}

/// Whether the next header can be had only by unpacking much: a look at the first ones would take as long as all.
bool isNextFar(const ArchiveReader& reader, const Member& member) {
    constexpr std::uint64_t kMuch = std::uint64_t{1} << 20;
    return !reader.facts().listedByHeaders && member.packedSize > kMuch;
}

bool areMembersGood(ArchiveReader& reader, std::int32_t mode) {
    const std::int32_t depth = mode & check_mode::kDepthMask;
    Member member;
    for (std::int64_t count = 0; depth != check_mode::kRapid || count < kRapidHeaders; ++count) {
        const ReturnCode code = reader.next(member);
        if (code == kNoMoreEntries) {
            return true;
        }
        if (code != kOk) {
            // What stands behind a damaged header can not be found; what stands before it can still be had.
            return (mode & check_mode::kRecovery) != 0 && count > 0;
        }
        if (depth == check_mode::kRapid && isNextFar(reader, member)) return true;
        if (depth >= check_mode::kFullCrc && !isDataGood(reader, member)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::int32_t checkArchive(OpenFunction open, const std::filesystem::path& file, std::int32_t mode) {
    const OpenResult opened = open(file);
    if (opened.reader == nullptr) {
        return opened.code == kPasswordFile ? kPasswordFile : 0;
    }
    if (!areMembersGood(*opened.reader, mode)) {
        return 0;
    }
    const bool tellKind = (mode & check_mode::kSfx) != 0 && opened.reader->facts().selfExtracting;
    return tellKind ? kSelfExtractorAnswer : 1;
}

std::int32_t countMembers(OpenFunction open, const std::filesystem::path& file) {
    const OpenResult opened = open(file);
    if (opened.reader == nullptr) {
        return -1;
    }
    Member member;
    std::int32_t count = 0;
    ReturnCode code = opened.reader->next(member);
    for (; code == kOk && count < std::numeric_limits<std::int32_t>::max(); ++count) {
        code = opened.reader->next(member);
    }
    return code == kOk || code == kNoMoreEntries ? count : -1;
}

}  // namespace archiver
