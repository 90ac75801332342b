#include "archivers/unlha32/lzh_change.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "archivers/commands/moved_sources.h"
#include "archivers/commands/pack_sources.h"
#include "archivers/formats/letter_case.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "archivers/formats/lzh/stored_members.h"
#include "archivers/formats/moments.h"
#include "archivers/formats/utf8.h"
#include "archivers/packing/verify_members.h"
#include "archivers/unlha32/member_packing.h"
#include "archivers/unpacking/name_hash.h"

namespace archiver {

namespace {

#ifdef _WIN32
constexpr bool kWindows = true;
#else
constexpr bool kWindows = false;
#endif

/// Names that are equal but for their case and the kind of their separators have equal keys.
std::string keyOf(std::string_view utf8) {
    std::string key;
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        appendUtf8(next.value == U'\\' ? U'/' : foldCase(next.value), key);
        utf8.remove_prefix(next.length);
    }
    return key;
}

bool isNewer(const SourceItem& item, const Member& member) {
    if (!item.facts.written) return false;
    if (member.written) return item.facts.written->seconds > member.written->seconds;
    // Packed words have steps of two seconds.
    const std::optional<Moment> old = momentOfDosStamp({.date = member.dosDate, .time = member.dosTime});
    return !old || item.facts.written->seconds > old->seconds + 1;
}

std::string_view nameOf(int method) noexcept {
    switch (method) {
        case lzh_method::kStored:
            return "-lh0-";
        case lzh_method::kLh6:
            return "-lh6-";
        case lzh_method::kLh7:
            return "-lh7-";
        default:
            // Whatever reads -lh1-, which nobody has packed with for decades, reads this as well.
            return "-lh5-";
    }
}

class LzhChange {
public:
    LzhChange(const Command& command, unsigned threads, ChangeEvents& events, SourceSystem& sources,
              PackingFiles& files)
        : command_(command),
          threads_(threads),
          events_(events),
          sources_(sources),
          replacement_(files, command.archive) {}

    ReturnCode pack();
    ReturnCode remove();

private:
    struct Hash {
        NameHash hash;
        std::size_t operator()(const std::string& text) const noexcept { return static_cast<std::size_t>(hash(text)); }
    };

    [[nodiscard]] ReturnCode open(bool mayBeMissing);
    void plan();
    [[nodiscard]] ReturnCode write(MemberPacking& packing);
    [[nodiscard]] ReturnCode verify(const MemberPacking& packing);
    [[nodiscard]] ReturnCode commit(bool empty);
    [[nodiscard]] OldBytes bytesOf(const lzh::StoredMember& stored) const { return {stored.offset, stored.end}; }

    const Command& command_;
    unsigned threads_;
    ChangeEvents& events_;
    SourceSystem& sources_;
    std::unique_ptr<InputFile> old_;  ///< null: there is none
    std::uint64_t start_ = 0;         ///< of the first member
    std::vector<lzh::StoredMember> stored_;
    std::vector<SourceItem> items_;
    static constexpr std::size_t kNoItem = ~std::size_t{0};
    static constexpr std::size_t kGone = kNoItem - 1;  ///< one of the same name was replaced
    std::vector<std::size_t> replaced_;                ///< of each stored member, by what
    std::vector<std::size_t> added_;                   ///< items at the end
    ArchiveReplacement replacement_;                   ///< goes before what it is made of
};

/// Reads what the old archive holds.
ReturnCode LzhChange::open(bool mayBeMissing) {
    InputFileResult opened = openInputFile(command_.archive);
    if (!opened.file) return mayBeMissing && opened.code == kNotFindArcFile ? kOk : opened.code;
    // A file without a byte holds nothing that could be lost: somebody made it to have the name.
    if (mayBeMissing && opened.file->size() == 0) return kOk;
    const ReturnCode code = lzh::readStoredMembers(*opened.file, start_, stored_);
    if (code == kOk) old_ = std::move(opened.file);
    return code;
}

/// Decides which items are packed, and where they go.
void LzhChange::plan() {
    std::unordered_map<std::string, std::size_t, Hash> items;
    items.reserve(items_.size());
    for (std::size_t at = 0; at < items_.size(); ++at) items.emplace(keyOf(items_[at].name), at);
    const PackRequest::Mode mode = command_.pack.mode;
    enum class Fate : char { kNew, kPlaced, kKept };
    std::vector<Fate> fates(items_.size(), Fate::kNew);
    replaced_.assign(stored_.size(), kNoItem);
    for (std::size_t at = 0; at < stored_.size(); ++at) {
        const auto found = items.find(keyOf(stored_[at].member.name));
        if (found == items.end()) continue;
        Fate& fate = fates[found->second];
        if (fate == Fate::kPlaced) {
            replaced_[at] = kGone;
        } else if (mode == PackRequest::Mode::kAdd || isNewer(items_[found->second], stored_[at].member)) {
            fate = Fate::kPlaced;
            replaced_[at] = found->second;
        } else {
            fate = Fate::kKept;
        }
    }
    if (mode == PackRequest::Mode::kFreshen) return;
    for (std::size_t at = 0; at < items_.size(); ++at) {
        if (fates[at] == Fate::kNew) added_.push_back(at);
    }
}

ReturnCode LzhChange::pack() {
    const PackRequest& request = command_.pack;
    const bool freshen = request.mode == PackRequest::Mode::kFreshen;
    ReturnCode code = open(!freshen);
    if (code != kOk) return code;
    MovedFolders folders;
    const ReturnCode missing = findSources(command_, sources_, events_, items_, folders);
    plan();
    std::uint64_t members = added_.size();
    std::uint64_t bytes = 0;
    for (const std::size_t item : added_) bytes += items_[item].facts.size;
    for (const std::size_t item : replaced_) {
        if (item >= kGone) continue;
        ++members;
        bytes += items_[item].facts.size;
    }
    if (members == 0) {
        // With nothing newer all is as it should be.
        if (missing != kOk) return missing;
        return items_.empty() ? kNotExist : kOk;
    }
    events_.total(members, bytes);
    code = replacement_.begin();
    if (code != kOk) return code;
    const LzhMethod method{.name = std::string(nameOf(request.method)),
                           .headers = {.level = request.headerLevel, .windows = kWindows},
                           .threads = threads_,
                           .sumForMoves = request.move};
    MemberPacking packing(sources_, replacement_, old_.get(), method, events_);
    code = write(packing);
    if (code == kOk) code = replacement_.finish();
    if (code == kOk && packing.packed().empty()) return packing.leftOut();
    if (code == kOk && request.move) code = verify(packing);
    if (code == kOk) code = commit(false);
    if (code != kOk) return code;
    if (request.move) {
        std::vector<MovedSource> moved;
        for (const PackedSource& source : packing.packed()) {
            if (!source.changed) moved.push_back({&items_[source.item], source.size});
        }
        removeMoved(moved, folders, sources_, events_);
    }
    return packing.leftOut() != kOk ? packing.leftOut() : missing;
}

ReturnCode LzhChange::write(MemberPacking& packing) {
    ReturnCode code = start_ > 0 ? packing.copy({0, start_}) : kOk;
    for (std::size_t at = 0; at < stored_.size() && code == kOk; ++at) {
        const OldBytes old = bytesOf(stored_[at]);
        const std::size_t item = replaced_[at];
        if (item == kNoItem) {
            code = packing.copy(old);
        } else if (item != kGone) {
            code = packing.add(items_[item], item, old);
        }
    }
    for (std::size_t at = 0; at < added_.size() && code == kOk; ++at) {
        code = packing.add(items_[added_[at]], added_[at], std::nullopt);
    }
    return code == kOk ? packing.finish() : code;
}

ReturnCode LzhChange::verify(const MemberPacking& packing) {
    std::vector<ExpectedMember> expected;
    for (const PackedSource& source : packing.packed()) {
        const SourceItem& item = items_[source.item];
        if (!item.isFolder()) expected.push_back({.name = item.name, .size = source.size, .crc = source.crc32});
    }
    return verifyMembers(&openLzh, replacement_.temporary(), expected, {}, [this] { return events_.taken(0); });
}

/// Nobody may have the old archive open when it is replaced.
ReturnCode LzhChange::commit(bool empty) {
    if (!events_.replacing()) return kUserCancel;
    old_.reset();
    return empty ? replacement_.commitRemoval() : replacement_.commit();
}

ReturnCode LzhChange::remove() {
    ReturnCode code = open(false);
    if (code != kOk) return code;
    std::vector<const lzh::StoredMember*> kept;
    std::vector<const lzh::StoredMember*> gone;
    for (const lzh::StoredMember& stored : stored_) {
        const bool chosen = !stored.member.name.empty() && (!command_.chosen || command_.chosen(stored.member));
        (chosen ? gone : kept).push_back(&stored);
    }
    if (gone.empty()) return kNotExist;
    code = replacement_.begin();
    if (code != kOk) return code;
    const bool empty = kept.empty();
    if (!empty) {
        MemberPacking packing(sources_, replacement_, old_.get(), {.name = "-lh0-", .headers = {}}, events_);
        if (start_ > 0) code = packing.copy({0, start_});
        for (std::size_t at = 0; at < kept.size() && code == kOk; ++at) code = packing.copy(bytesOf(*kept[at]));
        if (code == kOk) code = packing.finish();
        if (code == kOk) code = replacement_.finish();
    }
    if (code == kOk) code = commit(empty);
    if (code != kOk) return code;
    for (const lzh::StoredMember* const stored : gone) events_.deleted(stored->member);
    return kOk;
}

}  // namespace

ReturnCode changeLzh(const Command& command, unsigned threads, ChangeEvents& events) {
    return changeLzh(command, threads, events, systemSources(), systemPackingFiles());
}

ReturnCode changeLzh(const Command& command, unsigned threads, ChangeEvents& events, SourceSystem& sources,
                     PackingFiles& files) {
    LzhChange change(command, threads, events, sources, files);
    return command.action == Command::Action::kDelete ? change.remove() : change.pack();
}

}  // namespace archiver
