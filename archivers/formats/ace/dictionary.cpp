#include "archivers/formats/ace/dictionary.h"

#include <algorithm>

namespace archiver::ace {

std::span<char> Dictionary::room(std::size_t most) {
    constexpr std::size_t kLargestRoom = 64U << 10;  // far below what lies beyond reach
    if (position_ == size_) {
        if (size_ == kFullSize) {
            position_ = 0;
        } else {
            size_ = std::clamp(size_ * 2, kFirstSize, kFullSize);
            memory_.resize(size_ + kSlack);
        }
    }
    return {memory_.data() + position_, std::min({most, kLargestRoom, size_ - position_})};
}

void Dictionary::append(std::span<const char> bytes) {
    while (!bytes.empty()) {
        const std::span<char> to = room(bytes.size());
        std::copy_n(bytes.begin(), to.size(), to.begin());
        commit(to.size());
        bytes = bytes.subspan(to.size());
    }
}

void Dictionary::copyAround(char* to, std::size_t from, std::size_t length) noexcept {
    for (; length != 0; --length) {
        *to++ = memory_[from++];
        if (from == size_) from = 0;
    }
}

}  // namespace archiver::ace
