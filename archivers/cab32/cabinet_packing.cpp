#include "archivers/cab32/cabinet_packing.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "archivers/commands/pack_sources.h"
#include "archivers/formats/cab/cabinet_writer.h"
#include "archivers/formats/moments.h"
#include "archivers/packing/archive_replacement.h"

namespace archiver {

namespace {

constexpr std::size_t kPiece = std::size_t{256} << 10;  // bytes of a file that are read at once

class ReplacementOutput final : public CabinetOutput {
public:
    explicit ReplacementOutput(ArchiveReplacement& replacement) : replacement_(replacement) {}
    ReturnCode append(std::span<const char> bytes) override { return replacement_.write(bytes); }
    ReturnCode patch(std::uint64_t offset, std::span<const char> bytes) override {
        return replacement_.patch(offset, bytes);
    }

private:
    ArchiveReplacement& replacement_;
};

/// A "\" inside a part, as some systems allow, would be a folder of its own once it is unpacked.
std::string storedName(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '_');
    std::replace(name.begin(), name.end(), '/', '\\');
    return name;
}

CabinetMember memberOf(const SourceItem& item) {
    return {.name = storedName(item.name),
            .size = item.facts.size,
            .changed = dosStampOf(item.facts.written.value_or(Moment{})),
            .attributes = item.facts.attributes};
}

class CabinetPacking {
public:
    CabinetPacking(const std::filesystem::path& archive, CabinetMethod method, unsigned threads, SourceSystem& sources,
                   PackingFiles& files, ChangeEvents& events)
        : method_(method),
          sources_(sources),
          events_(events),
          replacement_(files, archive),
          output_(replacement_),
          writer_(output_, method, threads) {}

    ReturnCode run(const std::vector<SourceItem>& items) {
        ReturnCode code = take(items);
        if (code == kOk) code = replacement_.begin();
        if (code == kOk) code = writer_.begin(members_);
        for (std::size_t i = 0; code == kOk && i < files_.size(); ++i) code = pack(i);
        if (code == kOk && packed_ == 0) code = kFileOpen;
        if (code == kOk) code = writer_.finish();
        if (code == kOk) code = replacement_.finish();
        if (code == kOk && !events_.replacing()) code = kUserCancel;
        if (code == kOk) code = replacement_.commit();
        return code == kOk && packed_ < files_.size() ? kFileOpen : code;
    }

private:
    /// Sees whether a cabinet can hold the files before any of them is read.
    ReturnCode take(const std::vector<SourceItem>& items) {
        std::uint64_t bytes = 0;
        for (const SourceItem& item : items) {
            if (item.isFolder()) continue;
            CabinetMember member = memberOf(item);
            if (const ReturnCode code = cab::checkMember(member); code != kOk) return code;
            bytes += member.size;
            members_.push_back(std::move(member));
            files_.push_back(&item);
        }
        if (files_.empty()) return kNotExist;
        if (files_.size() > cab::kMostMembers) return kTooManyFiles;
        events_.total(files_.size(), bytes);
        return kOk;
    }

    ReturnCode pack(std::size_t index) {
        const SourceItem& item = *files_[index];
        if (!events_.beginMember(item)) return kUserCancel;
        const InputFileResult opened = sources_.open(item.path);
        if (!opened.file) {
            events_.warning(PackWarning::kNotOpened, item.name);
            return kOk;
        }
        const std::uint64_t before = writer_.bytes();
        if (const ReturnCode code = writer_.member(index); code != kOk) return code;
        std::uint64_t at = 0;
        while (at < item.facts.size) {
            const std::span<char> room = std::span(piece_).first(
                static_cast<std::size_t>(std::min<std::uint64_t>(piece_.size(), item.facts.size - at)));
            const std::optional<std::size_t> read = opened.file->readAt(at, room);
            if (!read) {
                writer_.drop();
                events_.warning(PackWarning::kNotOpened, item.name);
                return kOk;
            }
            if (*read == 0) break;
            if (const ReturnCode code = writer_.write(room.first(*read)); code != kOk) return code;
            at += *read;
            if (!events_.taken(*read)) return kUserCancel;
        }
        if (at < item.facts.size) events_.warning(PackWarning::kChanged, item.name);
        ++packed_;
        // Blocks hold several members: a member's packed size is what the cabinet grew by meanwhile.
        const PackedMember packed{.name = members_[index].name,
                                  .originalSize = at,
                                  .packedSize = writer_.bytes() - before,
                                  .stored = method_ == CabinetMethod::kStored};
        return events_.endMember(packed) ? kOk : kUserCancel;
    }

    CabinetMethod method_;
    SourceSystem& sources_;
    ChangeEvents& events_;
    ArchiveReplacement replacement_;
    ReplacementOutput output_;
    CabinetWriter writer_;
    std::vector<const SourceItem*> files_;
    std::vector<CabinetMember> members_;  ///< of each file
    std::vector<char> piece_ = std::vector<char>(kPiece);
    std::size_t packed_ = 0;
};

}  // namespace

ReturnCode packCabinet(const std::filesystem::path& archive, const std::vector<SourceItem>& items, CabinetMethod method,
                       unsigned threads, SourceSystem& sources, PackingFiles& files, ChangeEvents& events) {
    return CabinetPacking(archive, method, threads, sources, files, events).run(items);
}

ReturnCode changeCabinet(const Command& command, unsigned threads, ChangeEvents& events) {
    std::vector<SourceItem> items;
    MovedFolders folders;  // none: no line of this library moves
    const ReturnCode found = findSources(command, systemSources(), events, items, folders);
    const ReturnCode packed = items.empty() && found != kOk
                                  ? found
                                  : packCabinet(command.archive, items, static_cast<CabinetMethod>(command.pack.method),
                                                threads, systemSources(), systemPackingFiles(), events);
    return packed == kOk ? found : packed;
}

}  // namespace archiver
