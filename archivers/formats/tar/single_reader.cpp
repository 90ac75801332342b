#include "archivers/formats/tar/single_reader.h"

#include <utility>

#include "archivers/formats/moments.h"

namespace archiver::tar {
namespace {

int archiveTypeOf(Compression compression) noexcept {
    switch (compression) {
        case Compression::kGzip:
            return 4;
        case Compression::kCompress:
            return 5;
        case Compression::kBzip2:
            return 7;
        case Compression::kNone:
            break;
    }
    return 0;
}

const char* methodTextOf(Compression compression) noexcept {
    switch (compression) {
        case Compression::kGzip:
            return "- gz-";
        case Compression::kCompress:
            return "-  z-";
        case Compression::kBzip2:
            return "-bz2-";
        case Compression::kNone:
            break;
    }
    return "-----";
}

}  // namespace

SingleReader::SingleReader(std::unique_ptr<InputFile> file, Compression compression, SingleMember member)
    : file_(std::move(file)), compression_(compression), member_(std::move(member)) {
    facts_.fileSize = file_->size();
    facts_.osType = member_.osType;
    facts_.archiveType = archiveTypeOf(compression);
}

ReturnCode SingleReader::restart() {
    position_ = Position::kBefore;
    consumed_ = 0;
    return kOk;
}

ReturnCode SingleReader::next(Member& member) {
    if (position_ != Position::kBefore) {
        position_ = Position::kBehind;
        return kNoMoreEntries;
    }
    const DosStamp stamp = dosStampOf(member_.written);
    member = Member{.name = member_.name,
                    .originalSize = 0,
                    .packedSize = file_->size(),
                    .crc = 0,
                    .osType = member_.osType,
                    .dosDate = stamp.date,
                    .dosTime = stamp.time,
                    .attributes = 0,
                    .method = methodTextOf(compression_),
                    .encrypted = false,
                    .kind = MemberKind::kFile,
                    .linkTarget = {},
                    .written = member_.written,
                    .created = std::nullopt,
                    .accessed = std::nullopt};
    position_ = Position::kOn;
    return kOk;
}

ReturnCode SingleReader::read(const DataSink& sink) {
    if (position_ != Position::kOn) return kNotSearchMode;
    position_ = Position::kBehind;
    const auto stream = makeStream(*file_, compression_);
    for (;;) {
        std::span<const char> piece;
        if (const ReturnCode code = stream->next(piece); code != kOk) return code;
        consumed_ = stream->consumed();
        if (piece.empty()) return kOk;
        if (!sink(piece.data(), piece.size())) return kUserCancel;
    }
}

}  // namespace archiver::tar
