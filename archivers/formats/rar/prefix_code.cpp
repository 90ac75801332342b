#include "archivers/formats/rar/prefix_code.h"

#include <algorithm>

namespace archiver::rar {

bool PrefixCode::build(std::span<const std::uint8_t> lengths) noexcept {
    std::array<std::uint16_t, kLongest + 1> counts{};
    for (const std::uint8_t length : lengths) ++counts[length];
    std::uint32_t end = 0;
    std::uint16_t index = 0;
    std::array<std::uint16_t, kLongest + 1> next{};
    for (std::size_t length = 1; length <= kLongest; ++length) {
        end += std::uint32_t{counts[length]} << (kLongest - length);
        end_[length] = end;
        first_[length] = next[length] = index;
        index = static_cast<std::uint16_t>(index + counts[length]);
    }
    short_.fill({});
    if (end > std::uint32_t{1} << kLongest) {
        end_.fill(0);
        return false;
    }
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] != 0) symbols_[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
    }
    auto at = short_.begin();
    for (std::size_t length = 1; length <= kShort; ++length) {
        for (std::size_t count = 0; count < counts[length]; ++count) {
            const auto stop = at + (std::ptrdiff_t{1} << (kShort - length));
            std::fill(at, stop, Short{symbols_[first_[length] + count], static_cast<std::uint8_t>(length)});
            at = stop;
        }
    }
    return true;
}

int PrefixCode::takeLong(BitInput& bits) const noexcept {
    const std::uint32_t code = bits.peek(kLongest);
    for (std::size_t length = kShort + 1; length <= kLongest; ++length) {
        if (code >= end_[length]) continue;
        bits.drop(static_cast<int>(length));
        return symbols_[first_[length] + ((code - end_[length - 1]) >> (kLongest - length))];
    }
    return -1;
}

}  // namespace archiver::rar
