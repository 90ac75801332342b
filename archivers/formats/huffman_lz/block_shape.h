#pragma once
#include <cstddef>

namespace archiver::huffman_lz {

/// What differs between the methods that pack in such blocks.
struct BlockShape {
    std::size_t positions;  ///< codes of positions, at most kMostPositions; n of them reach 2^(n-1) back
    unsigned positionBits;  ///< width of the number that tells how many of them a block uses
};

inline constexpr std::size_t kMostPositions = 20;
inline constexpr std::size_t kLiterals = 510;    ///< 0 to 255: a byte; from 256 on: a match of 3 bytes and more
inline constexpr std::size_t kFirstMatch = 256;  ///< stands for a match of kShortestMatch bytes
inline constexpr std::size_t kShortestMatch = 3;
inline constexpr std::size_t kLongestMatch = 256;
inline constexpr std::size_t kLengthCodes = 19;     ///< what the lengths of the literals' codes are written in
inline constexpr std::size_t kMostSymbols = 65535;  ///< of one block
inline constexpr unsigned kLongestCode = 16;

}  // namespace archiver::huffman_lz
