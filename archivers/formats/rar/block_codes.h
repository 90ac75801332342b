#pragma once
#include <array>
#include <cstdint>

#include "archivers/formats/rar/prefix_code.h"

namespace archiver::rar {

/// The four codes of a block of literals and matches.
class BlockCodes {
public:
    static constexpr std::size_t kMain = 299;
    static constexpr std::size_t kDistances = 60;
    static constexpr std::size_t kLowDistances = 17;
    static constexpr std::size_t kLengths = 28;

    /// Forgets the lengths, which the next codes could have been told by.
    void clear() noexcept { lengths_.fill(0); }

    /// Reads them, from the bit on that tells whether they are changes to the last ones.
    /// @return false when they make no sense
    bool read(BitInput& bits);

    PrefixCode main, distance, lowDistance, length;

private:
    std::array<std::uint8_t, kMain + kDistances + kLowDistances + kLengths> lengths_{};
};

}  // namespace archiver::rar
