#include "archivers/formats/rar/block_codes.h"

#include <algorithm>

namespace archiver::rar {
namespace {

constexpr std::size_t kLengthCodes = 20;

/// Reads the code that the lengths of the other codes are packed with.
bool readLengthCode(BitInput& bits, PrefixCode& code) {
    std::array<std::uint8_t, kLengthCodes> lengths{};
    for (std::size_t at = 0; at < kLengthCodes;) {
        bits.fill();
        const std::uint32_t length = bits.take(4);
        const std::uint32_t zeros = length == 15 ? bits.take(4) : 0;
        if (zeros > 0)
            at += zeros + 2;
        else
            lengths[at++] = static_cast<std::uint8_t>(length);
    }
    return code.build(lengths);
}

}  // namespace

bool BlockCodes::read(BitInput& bits) {
    bits.fill();
    if (bits.take(1) == 0) clear();
    PrefixCode code;
    if (!readLengthCode(bits, code)) return false;
    for (std::size_t at = 0; at < lengths_.size();) {
        bits.fill();
        const int symbol = code.take(bits);
        if (symbol < 0 || bits.overrun()) return false;
        if (symbol < 16) {
            lengths_[at] = static_cast<std::uint8_t>((lengths_[at] + symbol) & 0x0F);
            ++at;
            continue;
        }
        // Runs: of the length before, or of zeros.
        const bool isZero = symbol >= 18;
        if (!isZero && at == 0) return false;
        const std::size_t wanted = symbol % 2 == 0 ? bits.take(3) + 3 : bits.take(7) + 11;
        const std::size_t end = std::min(at + wanted, lengths_.size());
        const std::uint8_t repeated = isZero ? 0 : lengths_[at - 1];
        std::fill(lengths_.begin() + static_cast<std::ptrdiff_t>(at),
                  lengths_.begin() + static_cast<std::ptrdiff_t>(end), repeated);
        at = end;
    }
    std::span<const std::uint8_t> rest = lengths_;
    const auto build = [&rest](PrefixCode& built, std::size_t count) {
        const bool good = built.build(rest.first(count));
        rest = rest.subspan(count);
        return good;
    };
    return build(main, kMain) && build(distance, kDistances) && build(lowDistance, kLowDistances) &&
           build(length, kLengths);
}

}  // namespace archiver::rar
