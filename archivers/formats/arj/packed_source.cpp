#include "archivers/formats/arj/packed_source.h"

#include <algorithm>

namespace archiver::arj {

PackedSource::PackedSource(const InputFile& file, const Part& part, std::string_view password)
    : huffman_lz::PackedSource(file, part.offset, part.packedSize) {
    if (!part.garbled || password.empty()) return;
    // The password many times over, so that the loop below has long runs.
    constexpr std::size_t kShortestPad = 1024;
    do {
        for (const char each : password) pad_ += static_cast<char>(static_cast<unsigned char>(each) + part.modifier);
    } while (pad_.size() < kShortestPad);
}

std::size_t PackedSource::read(unsigned char* into, std::size_t size) noexcept {
    const std::size_t got = huffman_lz::PackedSource::read(into, size);
    if (!pad_.empty()) ungarble(into, got);
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
