#include "archivers/formats/arj/volume_walk.h"

#include <utility>

namespace archiver::arj {

VolumeWalk::VolumeWalk(const std::filesystem::path& first, std::shared_ptr<const InputFile> file)
    : volumes_(first, std::move(file)) {}

ReturnCode VolumeWalk::begin() { return enter(0); }

ReturnCode VolumeWalk::enter(std::size_t volume) {
    std::shared_ptr<const InputFile> file;
    ReturnCode code = volumes_.open(volume, file);
    if (code != kOk) return code;
    auto walk = std::make_unique<HeaderWalk>(std::move(file));
    code = walk->begin();
    if (code != kOk) return code;
    walk_ = std::move(walk);
    volume_ = volume;
    onFirst_ = true;
    continued_ = false;
    return kOk;
}

ReturnCode VolumeWalk::rewind() {
    attached_ = 0;
    end_ = kOk;
    if (volume_ != 0) return enter(0);
    walk_->rewind();
    onFirst_ = true;
    continued_ = false;
    return kOk;
}

/// Reads the header that a member's next part must have: the first one of its volume.
ReturnCode VolumeWalk::nextPart(std::size_t volume, FileHeader& part) {
    std::shared_ptr<const InputFile> file;
    ReturnCode code = volumes_.open(volume, file);
    if (code != kOk) return code;
    HeaderWalk ahead(std::move(file));
    code = ahead.begin();
    if (code == kOk) code = ahead.next(part);
    return code == kFileStyle || code == kNoMoreEntries ? kHeaderBroken : code;
}

/// Collects a member's parts from the following volumes.
void VolumeWalk::gather(const FileHeader& first, MemberParts& member) {
    member.parts.clear();
    member.parts.push_back(partOf(first, volume_));
    member.state = first.has(flag::kContinuing) ? kCannotRead : kOk;

    std::uint32_t position = first.position + first.originalSize;
    bool goesOn = first.has(flag::kContinued);
    FileHeader part;
    for (std::size_t volume = volume_ + 1; goesOn; ++volume) {
        const ReturnCode code = nextPart(volume, part);
        if (code != kOk) {
            member.state = code;
            return;
        }
        // A volume of another set that happens to have the name.
        if (!part.has(flag::kContinuing) || part.name != first.name ||
            (part.position != 0 && part.position != position)) {
            member.state = kCannotRead;
            return;
        }
        member.parts.push_back(partOf(part, volume));
        attached_ = volume;
        position += part.originalSize;
        goesOn = part.has(flag::kContinued);
    }
}

ReturnCode VolumeWalk::next(FileHeader& header, MemberParts& member) {
    while (end_ == kOk) {
        ReturnCode code = walk_->next(header);
        if (code == kOk) {
            const bool given = onFirst_ && volume_ > 0 && volume_ <= attached_;
            onFirst_ = false;
            continued_ = header.has(flag::kContinued);
            if (given) continue;
            gather(header, member);
            return kOk;
        }
        const bool more = continued_ || (walk_->main().flags & flag::kContinued) != 0;
        if (code == kNoMoreEntries && more) {
            code = enter(volume_ + 1);
            if (code == kFileStyle) code = kHeaderBroken;
        }
        end_ = code;
    }
    return end_;
}

}  // namespace archiver::arj
