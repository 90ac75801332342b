#include "archivers/formats/huffman_lz/packed_source.h"

#include <algorithm>

namespace archiver::huffman_lz {

std::size_t PackedSource::read(unsigned char* into, std::size_t size) noexcept {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, left_));
    if (wanted == 0 || failed_) return 0;
    const std::size_t got = file_.readAt(offset_, {reinterpret_cast<char*>(into), wanted}).value_or(0);
    failed_ = got < wanted;
    offset_ += got;
    left_ -= got;
    return got;
}

}  // namespace archiver::huffman_lz
