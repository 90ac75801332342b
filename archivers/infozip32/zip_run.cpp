#include "archivers/infozip32/zip_run.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "archivers/formats/zip/zip_reader.h"

namespace archiver::infozip {

namespace result = zip_abi::result;

std::int32_t ZipRun::fail(std::int32_t code, std::string_view detail, ReturnCode cause) {
    console_.error(code, detail, cause);
    return code;
}

std::int32_t ZipRun::failWriting(ReturnCode cause) {
    switch (cause) {
        case kEnoughMemory:
            return fail(result::kMemory, task_.archiveName);
        case kCannotRead:
            return fail(result::kRead, task_.archiveName, cause);
        case kArcReadOnly:
        case kArcFileOpen:
        case kTmpOpen:
            return fail(result::kCreate, task_.archiveName, cause);
        default:
            return fail(result::kWrite, task_.archiveName, cause);
    }
}

std::int32_t ZipRun::run() {
    if (task_.encrypt) {
        std::string detail;
        const std::int32_t code = console_.password(task_.archiveName, task_.pack.password, detail);
        if (code != result::kOk) return fail(code, detail);
    }
    std::int32_t code = openOld();
    if (code == result::kOk) code = choose();
    if (code == result::kOk) code = write();
    std::ranges::fill(task_.pack.password, '\0');
    return code != result::kOk || !openFailed_ ? code : result::kOpen;
}

std::int32_t ZipRun::openOld() {
    const std::optional<SourceFacts> facts = systems_.sources.find(systems_.sources.absolute(task_.archive));
    if (!facts || (facts->kind == SourceKind::kFile && facts->size == 0)) {
        if (task_.mode == ZipTask::Mode::kAdd || task_.mode == ZipTask::Mode::kUpdate) return result::kOk;
        console_.warningOf(task_.archiveName, " not found or empty");
        const bool freshen = task_.mode == ZipTask::Mode::kFreshen;
        return fail(freshen ? result::kNothingToDo : result::kNoArchive, task_.archiveName);
    }
    const ReturnCode code = old_.open(task_.archive, task_.mode == ZipTask::Mode::kRepair);
    switch (code) {
        case kOk:
            hasOld_ = true;
            comment_ = old_.comment();
            return result::kOk;
        case kNotFindArcFile:
        case kArcFileOpen:
            return fail(result::kOpen, task_.archiveName);
        case kCannotRead:
            return fail(result::kRead, task_.archiveName, code);
        case kEnoughMemory:
            return fail(result::kMemory, task_.archiveName);
        default:
            return fail(result::kStructure, task_.archiveName);
    }
}

std::int32_t ZipRun::write() {
    ArchiveReplacement archive(systems_.files, task_.archive, systems_.buffer);
    if (const ReturnCode code = archive.begin(); code != kOk) return failWriting(code);
    if (const std::int32_t code = writeSteps(archive); code != result::kOk) return code;
    if (openFailed_ && entries_ == 0 && !hasOld_) return result::kOpen;
    if (task_.comment) console_.comment(comment_);
    if (const ReturnCode code = writeDirectory(archive); code != kOk) return failWriting(code);

    const bool moves = task_.move && !openFailed_;
    if (moves) {
        if (const std::int32_t code = verify(archive); code != result::kOk) return code;
    }
    old_.close();
    const bool empty = entries_ == 0 && task_.mode == ZipTask::Mode::kDelete;
    if (empty) console_.warning("zip file empty", {});
    const ReturnCode code = empty ? archive.commitRemoval() : archive.commit();
    if (code != kOk) return failWriting(code);
    if (moves) removeSources();
    console_.totals(totalOriginal_, totalPacked_);
    return result::kOk;
}

std::int32_t ZipRun::writeSteps(ArchiveReplacement& archive) {
    std::vector<const SourceItem*> packed;
    for (const Step& step : steps_) {
        if (step.item != Step::kNone) packed.push_back(&items_[step.item]);
    }
    MemberPacker packer(systems_.sources, packed, task_.pack, archive);
    packer.onWait = systems_.onWait;
    packer.onPart = [this] { console_.dot(); };
    if (hasOld_ && !task_.junkSelfExtractor) copyTo_ = old_.prefix();

    for (const std::size_t each : deleted_) {
        console_.deleting(old_.members()[each].name);
        if (!console_.service(old_.members()[each].name, 0)) return fail(result::kInterrupted, "aborting");
    }
    for (const Step& step : steps_) {
        if (step.item == Step::kNone) {
            if (const ReturnCode code = copyOld(archive, step.old); code != kOk) return failWriting(code);
        } else if (const std::int32_t code = packItem(archive, packer, step); code != result::kOk) {
            return code;
        }
    }
    const ReturnCode code = flushCopy(archive);
    return code == kOk ? result::kOk : failWriting(code);
}

std::int32_t ZipRun::packItem(ArchiveReplacement& archive, MemberPacker& packer, const Step& step) {
    if (const ReturnCode code = flushCopy(archive); code != kOk) return failWriting(code);
    const SourceItem& item = items_[step.item];
    using Verb = ZipConsole::Verb;
    const bool freshens = task_.mode == ZipTask::Mode::kFreshen;
    console_.begin(step.old == Step::kNone ? Verb::kAdding : freshens ? Verb::kFreshening : Verb::kUpdating, item.name);

    zip::NewMember member;
    const ReturnCode code = packer.pack(member);
    if (code == kFileOpen || code == kCannotRead) {
        // The member that it was to replace stays.
        openFailed_ = true;
        console_.warning("could not open for reading: ", item.name);
        if (step.old == Step::kNone) return result::kOk;
        const ReturnCode copied = copyOld(archive, step.old);
        return copied == kOk ? result::kOk : failWriting(copied);
    }
    if (code != kOk) return failWriting(code);
    console_.end(member.originalSize, member.packedSize, member.method == zip::kDeflated);
    directory_ += zip::centralHeaderOf(member);
    ++entries_;
    totalOriginal_ += member.originalSize;
    totalPacked_ += member.packedSize;
    if (task_.move) {
        added_.push_back({member.name, member.originalSize, member.crc});
        moved_.push_back(step.item);
    }
    return console_.service(member.name, member.originalSize) ? result::kOk : fail(result::kInterrupted, "aborting");
}

/// Notes a member to be copied; those that lie one behind the other are copied together.
ReturnCode ZipRun::copyOld(ArchiveReplacement& archive, std::size_t old) {
    const OldMember& member = old_.members()[old];
    if (member.start != copyTo_ || copyFrom_ == copyTo_) {
        if (const ReturnCode code = flushCopy(archive); code != kOk) return code;
        copyFrom_ = copyTo_ = member.start;
    }
    directory_ += zip::movedHeader(member.header, archive.size() + (member.start - copyFrom_));
    ++entries_;
    copyTo_ = member.end;
    return kOk;
}

ReturnCode ZipRun::flushCopy(ArchiveReplacement& archive) {
    const ReturnCode code = copyBytes(archive, copyFrom_, copyTo_);
    copyFrom_ = copyTo_;
    return code;
}

ReturnCode ZipRun::copyBytes(ArchiveReplacement& archive, std::uint64_t from, std::uint64_t to) {
    constexpr std::uint64_t kPiece = std::uint64_t{1} << 20;
    std::string bytes;
    while (from < to) {
        bytes.resize(static_cast<std::size_t>(std::min(to - from, kPiece)));
        if (!old_.file().readAll(from, bytes)) return kCannotRead;
        if (const ReturnCode code = archive.write(bytes); code != kOk) return code;
        from += bytes.size();
        systems_.onWait();
    }
    return kOk;
}

ReturnCode ZipRun::writeDirectory(ArchiveReplacement& archive) {
    const std::uint64_t start = archive.size();
    if (const ReturnCode code = archive.write(directory_); code != kOk) return code;
    return archive.write(zip::endRecordsOf(entries_, start, directory_.size(), comment_));
}

/// The new archive as its reader sees it, before anything is removed.
std::int32_t ZipRun::verify(ArchiveReplacement& archive) {
    if (const ReturnCode code = archive.finish(); code != kOk) return failWriting(code);
    const ReturnCode code =
        verifyMembers(static_cast<OpenFunction>(openZip), archive.temporary(), added_, task_.pack.password, [this] {
            systems_.onWait();
            return true;
        });
    return code == kOk ? result::kOk : fail(result::kTest, task_.archiveName);
}

/// Files first, then folders from the deepest on, and only those that are empty then.
void ZipRun::removeSources() {
    const auto isFolder = [this](std::size_t item) { return items_[item].isFolder(); };
    std::stable_partition(moved_.begin(), moved_.end(), [&](std::size_t item) { return !isFolder(item); });
    const auto folders = std::find_if(moved_.begin(), moved_.end(), isFolder);
    std::ranges::sort(folders, moved_.end(), std::greater(),
                      [this](std::size_t item) { return items_[item].name.size(); });
    for (const std::size_t each : moved_) {
        const SourceItem& item = items_[each];
        if (item.isFolder()) {
            static_cast<void>(systems_.sources.removeFolder(item.path));
        } else if (!systems_.sources.removeFile(item.path)) {
            console_.warning("could not delete: ", item.name);
        }
    }
}

}  // namespace archiver::infozip
