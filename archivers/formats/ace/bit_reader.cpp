#include "archivers/formats/ace/bit_reader.h"

#include <algorithm>

namespace archiver::ace {

BitWindow BitReader::more(BitWindow window) {
    constexpr std::size_t kWord = 4;
    std::size_t bytes = pastEnd_ == 0 ? source_.fill({buffer_.get(), kBuffer}) : 0;
    if (bytes % kWord != 0) {
        const std::size_t whole = (bytes + kWord - 1) / kWord * kWord;
        std::fill(buffer_.get() + bytes, buffer_.get() + whole, '\0');
        bytes = whole;
    }
    if (bytes == 0) {
        bytes = kWord;
        ++pastEnd_;
        std::fill_n(buffer_.get(), bytes, '\0');
    }
    window.next = buffer_.get();
    window.end = window.next + bytes;
    return window;
}

bool BitReader::takeGolombRice(unsigned width, std::uint32_t& value) {
    constexpr std::uint64_t kLargest = 1 << 24;
    std::uint64_t sum = take(width);
    for (;;) {
        const auto ones = static_cast<unsigned>(std::countl_one(peek32()));
        sum += static_cast<std::uint64_t>(ones) << width;
        if (sum > kLargest) return false;
        if (ones < 32) {
            skip(ones + 1);
            break;
        }
        skip(32);
    }
    value = static_cast<std::uint32_t>(sum);
    return true;
}

}  // namespace archiver::ace
