#include "archivers/formats/arj/packed_source.h"

#include <algorithm>

namespace archiver::arj {

PackedSource::PackedSource(const InputFile& file, const Part& part, std::string_view password)
    : file_(file), offset_(part.offset), left_(part.packedSize) {
    if (!part.garbled || password.empty()) return;
    // The password many times over, so that the loop below has long runs.
    constexpr std::size_t kShortestPad = 1024;
    do {
        for (const char each : password) pad_ += static_cast<char>(static_cast<unsigned char>(each) + part.modifier);
    } while (pad_.size() < kShortestPad);
}

std::size_t PackedSource::read(unsigned char* into, std::size_t size) noexcept {
    const std::size_t wanted = std::min<std::size_t>(size, left_);
    if (wanted == 0 || failed_) return 0;
    const std::size_t got = file_.readAt(offset_, {reinterpret_cast<char*>(into), wanted}).value_or(0);
    failed_ = got < wanted;
    if (!pad_.empty()) ungarble(into, got);
    offset_ += got;
    left_ -= static_cast<std::uint32_t>(got);
    return got;
}

void PackedSource::ungarble(unsigned char* bytes, std::size_t size) noexcept {
    while (size > 0) {
        const std::size_t run = std::min(size, pad_.size() - padAt_);
        for (std::size_t index = 0; index < run; ++index) {
            bytes[index] ^= static_cast<unsigned char>(pad_[padAt_ + index]);
        }
        padAt_ = (padAt_ + run) % pad_.size();
        bytes += run;
        size -= run;
    }
}

}  // namespace archiver::arj
