#include "archivers/formats/lzh/lzh_reader.h"

#include <utility>

#include "archivers/formats/lzh/header.h"
#include "archivers/formats/lzh/header_search.h"
#include "archivers/formats/lzh/member_fields.h"
#include "archivers/formats/lzh/unpack.h"

namespace archiver {
namespace lzh {
namespace {

/// Members are packed each by itself.
class DetachedMember final : public DetachedData {
public:
    DetachedMember(const InputFile& file, const Header& header, ObjectPool<BlockUnpacker>& blockUnpackers)
        : file_(file), header_(header), blockUnpackers_(blockUnpackers) {}
    ReturnCode read(const DataSink& sink) override { return unpack(file_, header_, blockUnpackers_, sink); }

private:
    const InputFile& file_;
    Header header_;
    ObjectPool<BlockUnpacker>& blockUnpackers_;
};

class LzhReader final : public ArchiveReader {
public:
    explicit LzhReader(std::unique_ptr<InputFile> file) : file_(std::move(file)) {}

    ReturnCode begin() {
        ReturnCode code = findFirstHeader(*file_, start_);
        if (code != kOk) return code;
        code = readHeader(*file_, start_, header_);
        if (code != kOk) return code;
        facts_.fileSize = file_->size();
        facts_.osType = osTypeOf(header_.system);
        facts_.selfExtracting = start_ > 0;
        return restart();
    }

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    ReturnCode read(const DataSink& sink) override;
    std::unique_ptr<DetachedData> detach() override {
        if (!unread_ || header_.isFolderOrLink()) return nullptr;
        unread_ = false;
        return std::make_unique<DetachedMember>(*file_, header_, blockUnpackers_);
    }

private:
    std::unique_ptr<InputFile> file_;
    ArchiveFacts facts_;
    std::uint64_t start_ = 0;
    std::uint64_t position_ = 0;  ///< of the next header
    ReturnCode ended_ = kOk;
    Header header_;
    bool unread_ = false;  ///< the current member was not read yet
    ObjectPool<BlockUnpacker> blockUnpackers_;
};

ReturnCode LzhReader::restart() {
    position_ = start_;
    ended_ = kOk;
    unread_ = false;
    return kOk;
}

ReturnCode LzhReader::next(Member& member) {
    unread_ = false;
    if (ended_ != kOk) return ended_;
    do {
        if (position_ > file_->size()) return ended_ = kHeaderBroken;
        ended_ = readHeader(*file_, position_, header_);
        if (ended_ != kOk) return ended_;
        position_ = header_.dataOffset + header_.packedSize;
    } while (!header_.hasName());
    fillMember(header_, member);
    unread_ = true;
    return kOk;
}

ReturnCode LzhReader::read(const DataSink& sink) {
    if (!std::exchange(unread_, false)) return kNotSearchMode;
    return header_.isFolderOrLink() ? kOk : unpack(*file_, header_, blockUnpackers_, sink);
}

}  // namespace
}  // namespace lzh

OpenResult openLzh(std::unique_ptr<InputFile> file) {
    auto reader = std::make_unique<lzh::LzhReader>(std::move(file));
    const ReturnCode code = reader->begin();
    if (code != kOk) return {nullptr, code};
    return {std::move(reader), kOk};
}

OpenResult openLzh(const std::filesystem::path& file) {
    InputFileResult opened = openInputFile(file);
    if (opened.file == nullptr) return {nullptr, opened.code};
    return openLzh(std::move(opened.file));
}

}  // namespace archiver
