#pragma once
#include <array>
#include <cstdint>

namespace archiver::ace {

/// What Blowfish starts with: the binary digits of pi behind the point, 32 a word.
/// Source: B. Schneier, "Description of a New Variable-Length Key, 64-Bit Block Cipher", 1994
extern const std::array<std::uint32_t, 18> kBlowfishSubkeys;
extern const std::array<std::array<std::uint32_t, 256>, 4> kBlowfishBoxes;  ///< the digits that follow

}  // namespace archiver::ace
