#include "archivers/formats/cab/cab_reader.h"

#include <utility>

#include "archivers/formats/cab/cabinet_search.h"
#include "archivers/formats/cab/cabinet_set.h"
#include "archivers/formats/cab/member_fields.h"

namespace archiver {
namespace cab {
namespace {

class CabReader final : public ArchiveReader {
public:
    ReturnCode begin(std::shared_ptr<const InputFile> file, const std::filesystem::path& path);

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    ReturnCode read(const DataSink& sink) override;

private:
    CabinetSet set_;
    ArchiveFacts facts_;
    std::size_t following_ = 0;  ///< the member that `next` gives
    bool unread_ = false;        ///< the one before it was not read yet
};

ReturnCode CabReader::begin(std::shared_ptr<const InputFile> file, const std::filesystem::path& path) {
    // Programs hold the mark of a cabinet now and then without one.
    constexpr int kMostTries = 16;
    facts_.fileSize = file->size();
    facts_.osType = os_type::kMsDos;
    const ReturnCode first = set_.open(file, 0, path);
    // A mark may stand right in front of the cabinet's own. Further on, what looks like one in a damaged cabinet may be
    // one of its members.
    constexpr std::uint64_t kHeaderSize = 36;
    const std::uint64_t until = first == kFileStyle ? file->size() : kHeaderSize;
    if (first != kFileStyle && first != kHeaderBroken) return first;
    ReturnCode code = first;
    std::uint64_t from = 0;
    for (int tries = 0; tries < kMostTries; ++tries) {
        const auto base = findCabinet(*file, from);
        if (!base || *base >= until) break;
        const ReturnCode found = set_.open(file, *base, path);
        if (found == kOk) {
            facts_.selfExtracting = true;
            return kOk;
        }
        if (code == kFileStyle) code = found;
        from = *base + 1;
    }
    return code;
}

ReturnCode CabReader::next(Member& member) {
    unread_ = false;
    if (following_ >= set_.entries().size()) return kNoMoreEntries;
    const CabinetSet::Entry& entry = set_.entries()[following_++];
    fillMember(*entry.file, entry.packed, member);
    unread_ = true;
    return kOk;
}

ReturnCode CabReader::restart() {
    following_ = 0;
    unread_ = false;
    return kOk;
}

ReturnCode CabReader::read(const DataSink& sink) {
    if (!std::exchange(unread_, false)) return kNotSearchMode;
    return set_.extract(set_.entries()[following_ - 1], sink);
}

}  // namespace
}  // namespace cab

OpenResult openCab(std::unique_ptr<InputFile> file, const std::filesystem::path& path) {
    auto reader = std::make_unique<cab::CabReader>();
    const ReturnCode code = reader->begin(std::move(file), path);
    if (code != kOk) return {nullptr, code};
    return {std::move(reader), kOk};
}

OpenResult openCab(const std::filesystem::path& file) {
    InputFileResult opened = openInputFile(file);
    if (opened.file == nullptr) return {nullptr, opened.code};
    return openCab(std::move(opened.file), file);
}

}  // namespace archiver
