#include "archivers/formats/arj/arj_reader.h"

#include <algorithm>
#include <utility>

#include "archivers/formats/arj/checksum.h"
#include "archivers/formats/arj/member_fields.h"
#include "archivers/formats/arj/text_lines.h"
#include "archivers/formats/arj/unpacker.h"
#include "archivers/formats/arj/volume_walk.h"
#include "archivers/formats/object_pool.h"

namespace archiver {
namespace arj {
namespace {

/// Whether texts on this system have lines that end with CR LF.
constexpr bool kTextsHaveReturns = static_cast<char>(std::filesystem::path::preferred_separator) == '\\';
constexpr std::uint8_t kLastMethod = 4;
/// The garble of old; what comes behind it in number are ciphers.
constexpr std::uint8_t kLastGarble = 1;

/// A member whose bytes lie in one part: with an unpacker of its own, it needs nothing of the reader.
class DetachedPart final : public DetachedData {
public:
    DetachedPart(std::shared_ptr<const InputFile> volume, const Part& part, bool text, ObjectPool<Unpacker>& unpackers)
        : volume_(std::move(volume)), part_(part), text_(text), unpackers_(unpackers) {}

    ReturnCode read(const DataSink& sink) override {
        const auto unpacker = unpackers_.take();
        if (!text_) return unpacker->unpack(*volume_, part_, {}, sink);
        TextLines lines(sink);
        return unpacker->unpack(*volume_, part_, {},
                                [&lines](const char* bytes, std::size_t size) { return lines(bytes, size); });
    }

private:
    std::shared_ptr<const InputFile> volume_;
    Part part_;
    bool text_;
    ObjectPool<Unpacker>& unpackers_;
};

class ArjReader final : public ArjArchive {
public:
    ArjReader(std::unique_ptr<InputFile> file, const std::filesystem::path& path)
        : size_(file->size()), walk_(path, std::move(file)) {}

    ReturnCode begin() {
        const ReturnCode code = walk_.begin();
        if (code != kOk) return code;
        facts_.fileSize = size_;
        facts_.osType = osTypeOf(walk_.main().host);
        facts_.selfExtracting = walk_.start() > 0;
        comment_ = readText(walk_.main(), walk_.main().host, walk_.main().comment);
        return kOk;
    }

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    [[nodiscard]] std::string comment() const override { return comment_; }
    [[nodiscard]] std::string memberComment() const override {
        return onMember_ ? readText(walk_.main(), header_.host, header_.comment) : std::string();
    }
    void setPassword(std::string_view password) override { password_ = password; }
    void setChapters(Chapters chapters) override { chapters_ = chapters; }

    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    ReturnCode read(const DataSink& sink) override;
    std::unique_ptr<DetachedData> detach() override;

private:
    [[nodiscard]] bool changesLines() const noexcept { return kTextsHaveReturns && header_.type == FileType::kText; }
    [[nodiscard]] bool isGarbled() const noexcept;
    [[nodiscard]] bool isListed() const noexcept;
    [[nodiscard]] ReturnCode whyNotReadable() const noexcept;
    ReturnCode readParts(const DataSink& sink);

    std::uint64_t size_;
    VolumeWalk walk_;
    ArchiveFacts facts_;
    std::string comment_;
    std::string password_;
    Chapters chapters_ = Chapters::kNewest;
    FileHeader header_;
    MemberParts data_;
    bool onMember_ = false;
    bool unread_ = false;  ///< the current member was not read yet
    ObjectPool<Unpacker> unpackers_;
};

bool ArjReader::isListed() const noexcept {
    switch (header_.type) {
        case FileType::kBinary:
        case FileType::kText:
        case FileType::kFolder:
            break;
        default:
            return false;
    }
    // A member with chapters that end before the last one was replaced or deleted since.
    const bool old = header_.lastChapter != 0 && header_.lastChapter < walk_.main().lastChapter;
    return !old || chapters_ == Chapters::kAll;
}

ReturnCode ArjReader::next(Member& member) {
    onMember_ = unread_ = false;
    do {
        const ReturnCode code = walk_.next(header_, data_);
        if (code != kOk) return code;
    } while (!isListed());
    onMember_ = unread_ = true;

    fillMember(walk_.main(), header_, member);
    for (std::size_t index = 1; index < data_.parts.size(); ++index) {
        const Part& part = data_.parts[index];
        member.originalSize += part.originalSize;
        member.packedSize += part.packedSize;
        member.crc = joinCrc32(member.crc, part.crc, part.originalSize);
        member.encrypted = member.encrypted || part.garbled;
    }
    if (data_.state != kOk && header_.wholeSize != 0) member.originalSize = header_.wholeSize;
    return kOk;
}

ReturnCode ArjReader::restart() {
    onMember_ = unread_ = false;
    return walk_.rewind();
}

bool ArjReader::isGarbled() const noexcept {
    return std::any_of(data_.parts.begin(), data_.parts.end(), [](const Part& part) { return part.garbled; });
}

ReturnCode ArjReader::whyNotReadable() const noexcept {
    if (data_.state != kOk) return data_.state;
    for (const Part& part : data_.parts) {
        if (part.method > kLastMethod) return kMethod;
        if (!part.garbled) continue;
        if (walk_.main().encryption > kLastGarble) return kMethod;
        if (password_.empty()) return kPasswordFile;
    }
    return kOk;
}

ReturnCode ArjReader::read(const DataSink& sink) {
    if (!unread_) return kNotSearchMode;
    unread_ = isGarbled();  // perhaps with another password
    if (header_.type == FileType::kFolder) return kOk;
    const ReturnCode code = whyNotReadable();
    if (code != kOk) return code;
    if (!changesLines()) return readParts(sink);
    TextLines lines(sink);
    return readParts([&lines](const char* bytes, std::size_t size) { return lines(bytes, size); });
}

std::unique_ptr<DetachedData> ArjReader::detach() {
    const bool alone = data_.parts.size() == 1 && data_.parts.front().originalSize > 0;
    if (!unread_ || !alone || header_.type == FileType::kFolder || isGarbled() || whyNotReadable() != kOk)
        return nullptr;
    std::shared_ptr<const InputFile> volume;
    if (walk_.volumes().open(data_.parts.front().volume, volume) != kOk) return nullptr;
    unread_ = false;
    return std::make_unique<DetachedPart>(std::move(volume), data_.parts.front(), changesLines(), unpackers_);
}

ReturnCode ArjReader::readParts(const DataSink& sink) {
    const auto unpacker = unpackers_.take();
    for (const Part& part : data_.parts) {
        std::shared_ptr<const InputFile> volume;
        ReturnCode code = walk_.volumes().open(part.volume, volume);
        if (code == kOk) code = unpacker->unpack(*volume, part, password_, sink);
        // A wrong password shows in nothing but data that makes no sense.
        if (part.garbled && (code == kHuffmanCode || code == kFileCrc)) return kPasswordFile;
        if (code != kOk) return code;
    }
    return kOk;
}

}  // namespace
}  // namespace arj

OpenResult openArj(std::unique_ptr<InputFile> file, const std::filesystem::path& path) {
    auto reader = std::make_unique<arj::ArjReader>(std::move(file), path);
    const ReturnCode code = reader->begin();
    if (code != kOk) return {nullptr, code};
    return {std::move(reader), kOk};
}

OpenResult openArj(const std::filesystem::path& file) {
    InputFileResult opened = openInputFile(file);
    if (opened.file == nullptr) return {nullptr, opened.code};
    return openArj(std::move(opened.file), file);
}

}  // namespace archiver
