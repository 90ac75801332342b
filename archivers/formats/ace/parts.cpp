#include "archivers/formats/ace/parts.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace archiver::ace {
namespace {

/// The offset behind data of a claimed size; one that no file has stays beyond every file's end.
std::uint64_t offsetBehind(std::uint64_t offset, std::uint64_t size) noexcept {
    constexpr std::uint64_t kFarthest = std::numeric_limits<std::uint64_t>::max();
    return size > kFarthest - offset ? kFarthest : offset + size;
}

}  // namespace

Place Part::behind() const noexcept { return {place.volume, offsetBehind(header.dataOffset, header.packedSize)}; }

ReturnCode readPart(const Place& place, Part& part) {
    std::uint64_t offset = place.offset;
    for (;;) {
        RawHeader raw;
        if (const ReturnCode code = place.volume->headerAt(offset, raw); code != kOk) return code;
        const std::uint64_t dataOffset = offset + raw.bytes.size();
        if (raw.type == HeaderType::kFile || raw.type == HeaderType::kFile64) {
            const ReturnCode code = parseFileHeader(raw, part.header);
            part.header.dataOffset = dataOffset;
            part.place = {place.volume, offset};
            return code;
        }
        std::uint64_t size = 0;
        if (const ReturnCode code = skippedSize(raw, size); code != kOk) return code;
        offset = offsetBehind(dataOffset, size);
    }
}

ReturnCode readPart(VolumeChain& chain, const Place& place, Part& part) {
    Place from = place;
    for (;;) {
        const ReturnCode code = readPart(from, part);
        if (code != kNoMoreEntries || !from.volume->multiVolume()) return code;
        // A volume can end with a whole member; whether another one follows shows only by looking.
        std::shared_ptr<Volume> following;
        if (chain.next(*from.volume, false, following) != kOk) return kNoMoreEntries;
        from = {following, following->firstHeader()};
    }
}

ReturnCode nextPart(VolumeChain& chain, Part& part, bool ask) {
    std::shared_ptr<Volume> following;
    if (const ReturnCode code = chain.next(*part.place.volume, ask, following); code != kOk) return code;
    Part found;
    const ReturnCode code = readPart({following, following->firstHeader()}, found);
    if (code == kNoMoreEntries) return kHeaderBroken;
    if (code != kOk) return code;
    if (!found.header.has(file_flag::kFromPreviousVolume) || found.header.name != part.header.name) {
        return kHeaderBroken;
    }
    part = std::move(found);
    return kOk;
}

PackedData::PackedData(VolumeChain& chain, Part first, std::shared_ptr<const Cipher> cipher)
    : chain_(chain), part_(std::move(first)), cipher_(std::move(cipher)) {}

bool PackedData::goToNext() {
    if (error_ != kOk || !part_.header.has(file_flag::kInNextVolume)) return false;
    error_ = nextPart(chain_, part_, true);
    done_ = 0;
    return error_ == kOk;
}

std::size_t PackedData::fill(std::span<char> into) {
    std::size_t filled = 0;
    while (filled < into.size() && error_ == kOk) {
        const std::uint64_t rest = part_.header.packedSize - done_;
        if (rest == 0) {
            if (!goToNext()) break;
            continue;
        }
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(rest, into.size() - filled));
        const std::optional<std::size_t> got =
            part_.place.volume->file().readAt(part_.header.dataOffset + done_, into.subspan(filled, wanted));
        if (got.value_or(0) < wanted) error_ = kCannotRead;
        filled += got.value_or(0);
        done_ += got.value_or(0);
    }
    if (cipher_ != nullptr) decryption_.decrypt(*cipher_, into.first(filled));
    return filled;
}

ReturnCode PackedData::goToLast() {
    while (goToNext()) continue;
    return error_;
}

}  // namespace archiver::ace
