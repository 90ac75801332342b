#include "archivers/formats/rar/window.h"

#include <algorithm>
#include <cstring>

namespace archiver::rar {

bool Window::copy(std::uint32_t distance, std::uint32_t length) noexcept {
    if (distance == 0 || distance > position_ || distance > kMost) return false;
    const std::size_t mask = size_ - 1;
    const auto to = static_cast<std::size_t>(position_ & mask);
    const auto from = static_cast<std::size_t>((position_ - distance) & mask);
    position_ += length;
    if (std::max(from, to) + length > size_) {
        for (std::uint32_t at = 0; at < length; ++at) bytes_[(to + at) & mask] = bytes_[(from + at) & mask];
        return true;
    }
    std::uint8_t* const target = bytes_.get() + to;
    const std::uint8_t* const source = bytes_.get() + from;
    // A match may overlap what it makes, in the bytes in front of it as well as a whole window behind.
    if (from + length <= to || to + length <= from)
        std::memcpy(target, source, length);
    else if (distance == 1)
        std::memset(target, *source, length);
    else
        for (std::uint32_t at = 0; at < length; ++at) target[at] = source[at];
    return true;
}

std::pair<std::span<const std::uint8_t>, std::span<const std::uint8_t>> Window::bytes(
    std::uint64_t begin, std::uint64_t end) const noexcept {
    if (begin >= end) return {};
    const auto from = static_cast<std::size_t>(begin & (size_ - 1));
    const auto count = static_cast<std::size_t>(end - begin);
    const std::size_t first = std::min(count, size_ - from);
    return {{bytes_.get() + from, first}, {bytes_.get(), count - first}};
}

void Window::grow() {
    constexpr std::size_t kFirst = std::size_t{64} * 1024;
    const std::size_t size = size_ == 0 ? kFirst : std::min(size_ * 2, kMost);
    auto bytes = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    // Before the window has its full size, positions are indexes.
    if (bytes_ != nullptr) std::memcpy(bytes.get(), bytes_.get(), static_cast<std::size_t>(position_));
    bytes_ = std::move(bytes);
    size_ = size;
}

}  // namespace archiver::rar
