#include "archivers/formats/rar/rar_reader.h"

#include <optional>
#include <utility>

#include "archivers/formats/rar/header_walk.h"
#include "archivers/formats/rar/new_decoder.h"
#include "archivers/formats/rar/old_decoder.h"

namespace archiver {
namespace rar {
namespace {

constexpr std::uint8_t kLastMethod = 5;

const char* methodText(std::uint8_t method) noexcept {
    static constexpr const char* kTexts[] = {"storing", "fastest", "fast", "normal", "good", "best"};
    return method <= kLastMethod ? kTexts[method] : "unknown";
}

/// A link of the old layout has its target as bytes.
bool hasBytes(const FileHeader& header) noexcept {
    return !header.folder && !header.redirected && (header.originalSize > 0 || !header.sizeKnown);
}

bool isPacked(const FileHeader& header) noexcept { return hasBytes(header) && header.method != kStored; }

/// Whether a file's place among those that share a dictionary counts.
bool isOfGroup(const FileHeader& header) noexcept {
    return !header.folder && !header.redirected && header.method != kStored;
}

/// Whether the bytes can be unpacked at all.
bool isSupported(Generation generation, const FileHeader& header) noexcept {
    constexpr std::uint8_t kFirstOldVersion = 29;
    constexpr std::uint8_t kBehindOldVersions = 50;
    constexpr std::uint8_t kLargestDictionary = 9;  // 64 MiB
    if (header.method > kLastMethod || !header.sizeKnown) return false;
    if (header.method == kStored) return true;
    if (generation == Generation::kOld)
        return header.version >= kFirstOldVersion && header.version < kBehindOldVersions;
    return header.version == 0 && header.dictionary <= kLargestDictionary;
}

/// The files that were packed one after the other with one dictionary. The file that is not solid is the first one.
struct Group {
    Place begin;
    std::uint64_t count = 0;  ///< files with packed bytes, up to the current one
    ReturnCode broken = kOk;  ///< what keeps the rest from being unpacked
    std::unique_ptr<GroupDecoder> decoder;
};

class RarReader final : public ArchiveReader {
public:
    explicit RarReader(std::unique_ptr<VolumeSet> volumes) : volumes_(std::move(volumes)), walk_(*volumes_) {
        facts_.fileSize = volumes_->firstSize();
        facts_.selfExtracting = volumes_->selfExtracting();
    }

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    ReturnCode read(const DataSink& sink) override;
    [[nodiscard]] std::uint64_t consumed() const override { return volumes_->read(); }

private:
    void fill(Member& member);
    void enterGroup();
    [[nodiscard]] ReturnCode whyNotReadable() const noexcept;
    ReturnCode readAlone(const DataSink& sink);
    ReturnCode readInGroup(const DataSink& sink);
    [[nodiscard]] std::unique_ptr<GroupDecoder> decoderOf(bool solid, FileSource files);
    [[nodiscard]] FileSource filesOfGroup();

    std::unique_ptr<VolumeSet> volumes_;
    HeaderWalk walk_;
    ArchiveFacts facts_;
    PackedFile file_;
    Group group_;
    bool readable_ = false;  ///< a member is current and was not read yet
};

ReturnCode RarReader::next(Member& member) {
    readable_ = false;
    if (const ReturnCode code = walk_.next(file_); code != kOk) return code;
    readable_ = true;
    volumes_->markRead(file_.place.volume, file_.place.offset);
    enterGroup();
    fill(member);
    return kOk;
}

ReturnCode RarReader::restart() {
    readable_ = false;
    group_ = {};
    walk_.rewind();
    volumes_->markRead(0, 0);
    return kOk;
}

void RarReader::enterGroup() {
    const FileHeader& header = file_.header;
    if (!isOfGroup(header)) return;
    if (!header.solid) {
        group_ = {};
        group_.begin = file_.place;
    } else if (group_.begin == Place{}) {
        group_.begin = file_.place;  // its first file is in a volume before, or was stored
    }
    if (!isPacked(header)) return;
    ++group_.count;
    if (group_.broken != kOk) return;
    if (file_.state != kOk)
        group_.broken = file_.state;
    else if (header.encrypted)
        group_.broken = kPasswordFile;
    else if (!isSupported(volumes_->generation(), header))
        group_.broken = kMethod;
}

void RarReader::fill(Member& member) {
    const FileHeader& header = file_.header;
    const char separator = volumes_->generation() == Generation::kOld ? '\\' : '/';
    member.name = header.name.empty() ? "_" : header.name;
    if (header.folder && member.name.back() != separator) member.name += separator;
    const bool counts = hasBytes(header);
    member.originalSize = counts ? header.originalSize : 0;
    member.packedSize = counts ? header.packedSize : 0;
    member.crc = counts && header.hasCrc ? header.crc : 0;
    member.osType = header.osType;
    member.attributes = header.attributes;
    member.method = methodText(header.method);
    member.encrypted = header.encrypted;
    member.kind = header.kind;
    member.linkTarget = header.linkTarget;
    member.dosDate = header.stamp.date;
    member.dosTime = header.stamp.time;
    member.written = header.written;
    member.created = header.created;
    member.accessed = header.accessed;
}

ReturnCode RarReader::whyNotReadable() const noexcept {
    if (file_.state != kOk) return file_.state;
    if (file_.header.encrypted) return kPasswordFile;
    if (!isSupported(volumes_->generation(), file_.header)) return kMethod;
    return kOk;
}

ReturnCode RarReader::read(const DataSink& sink) {
    if (!std::exchange(readable_, false)) return kNotSearchMode;
    if (file_.header.folder || file_.header.redirected) return kOk;
    if (const ReturnCode code = whyNotReadable(); code != kOk) return code;
    if (!hasBytes(file_.header)) return file_.header.crc == 0 ? kOk : kFileCrc;
    return file_.header.method == kStored ? readAlone(sink) : readInGroup(sink);
}

std::unique_ptr<GroupDecoder> RarReader::decoderOf(bool solid, FileSource files) {
    if (volumes_->generation() == Generation::kOld) return std::make_unique<OldDecoder>(*volumes_, std::move(files));
    return std::make_unique<NewDecoder>(*volumes_, solid, std::move(files));
}

ReturnCode RarReader::readAlone(const DataSink& sink) {
    const std::unique_ptr<GroupDecoder> decoder = decoderOf(false, [this, given = false](PackedFile& file) mutable {
        if (std::exchange(given, true)) return false;
        file = file_;
        return true;
    });
    const ReturnCode code = decoder->next(sink);
    return code == kOk ? decoder->read(file_.header, sink) : code;
}

/// The files of a group come from a walk of their own, for a decoder may read ahead.
FileSource RarReader::filesOfGroup() {
    auto walk = std::make_shared<HeaderWalk>(*volumes_);
    walk->goTo(group_.begin);
    return [walk, begin = group_.begin](PackedFile& file) {
        while (walk->next(file) == kOk) {
            const FileHeader& header = file.header;
            if (!isOfGroup(header)) continue;
            if (!header.solid && file.place != begin) return false;  // the next group
            if (!isPacked(header)) continue;
            return !header.encrypted && file.state == kOk;
        }
        return false;
    };
}

ReturnCode RarReader::readInGroup(const DataSink& sink) {
    if (group_.broken != kOk) return group_.broken;
    if (group_.decoder == nullptr) group_.decoder = decoderOf(true, filesOfGroup());
    ReturnCode code = kOk;
    while (code == kOk && group_.decoder->count() < group_.count) code = group_.decoder->next(sink);
    if (code == kOk) code = group_.decoder->read(file_.header, sink);
    // When packed bytes make no sense, the files behind them have no dictionary. Behind a wrong checksum some may be
    // good, and their own checksums tell.
    if (code != kOk && code != kUserCancel && code != kFileCrc) {
        group_.broken = code;
        group_.decoder.reset();
    }
    return code;
}

}  // namespace
}  // namespace rar

OpenResult openRar(std::unique_ptr<InputFile> file, const std::filesystem::path& path) {
    auto volumes = std::make_unique<rar::VolumeSet>(path, std::shared_ptr<const InputFile>(std::move(file)));
    if (const ReturnCode code = volumes->begin(); code != kOk) return {nullptr, code};
    return {std::make_unique<rar::RarReader>(std::move(volumes)), kOk};
}

OpenResult openRar(const std::filesystem::path& file) {
    InputFileResult opened = openInputFile(file);
    if (opened.file == nullptr) return {nullptr, opened.code};
    return openRar(std::move(opened.file), file);
}

}  // namespace archiver
