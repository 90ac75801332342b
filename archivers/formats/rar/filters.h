#pragma once
#include <cstdint>
#include <vector>

namespace archiver::rar {

/// The transformations that archivers of the format use. In the archive each is a program for a virtual machine; these
/// programs are always the same ones, and are known by their size and checksum. Others are not run.
enum class FilterKind : std::uint8_t { kUnknown, kDelta, kCalls, kCallsAndJumps, kPicture, kSound };

/// A transformation that is to be undone over some bytes.
struct Filter {
    /// Most bytes of one filter: the machine's memory, less what it keeps for itself.
    static constexpr std::uint32_t kMostBytes = 0x3C000;

    FilterKind kind = FilterKind::kUnknown;
    std::uint64_t begin = 0;   ///< a position in the window
    std::uint32_t length = 0;  ///< at most kMostBytes
    std::uint32_t first = 0;   ///< channels; of a picture, bytes of a row and 3
    std::uint32_t second = 0;  ///< of a picture, which of three bytes is the first red one
};

/// Undoes a filter.
/// @param offset  of the bytes in their file
/// @return false when the filter makes no sense for so many bytes
/// Source: the public sources of libarchive
bool undoFilter(const Filter& filter, std::uint32_t offset, std::vector<std::uint8_t>& bytes);

}  // namespace archiver::rar
