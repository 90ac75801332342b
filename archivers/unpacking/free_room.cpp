#include "archivers/unpacking/free_room.h"

#include <optional>

namespace archiver {

bool FreeRoom::fits(std::uint64_t bytes) {
    if (bytes > left_) {
        const std::optional<std::uint64_t> available = target_.freeSpace();
        if (!available) return true;
        left_ = *available;
    }
    if (bytes > left_) return false;
    left_ -= bytes;
    return true;
}

bool FreeRoom::admit(std::uint64_t bytes) {
    if (agreed_ || fits(bytes)) return true;
    agreed_ = events_.askDiskSpace(bytes, left_);
    return agreed_;
}

std::uint64_t plausibleSize(const Member& member) noexcept {
    // Deflate packs 1,032 to 1 at most. Where another method packs more, or the header lies, the file grows as it is
    // written.
    constexpr std::uint64_t kMostRatio = 1032;
    return member.originalSize / kMostRatio <= member.packedSize ? member.originalSize : 0;
}

}  // namespace archiver
