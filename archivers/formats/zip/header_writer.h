#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/formats/archive_reader.h"

namespace archiver::zip {

inline constexpr std::uint16_t kStored = 0;
inline constexpr std::uint16_t kDeflated = 8;

/// A member as its headers are to tell it.
struct NewMember {
    std::string name;  ///< UTF-8
    std::uint64_t originalSize = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t localOffset = 0;
    std::uint32_t crc = 0;
    std::uint16_t flags = 0;  ///< but for that of UTF-8 names, which comes by itself
    std::uint16_t method = kStored;
    std::uint8_t attributes = 0;
    bool large = false;       ///< sizes may need 64 bits: the local header has room for them
    bool plainTimes = false;  ///< only the time that every header has
    std::optional<Moment> written, created, accessed;
};

/// A name has 65,535 bytes at most.
inline constexpr std::size_t kLargestName = 0xFFFF;

/// The local header. Its size depends on the name, the times and `large` alone, so that it can be written again once
/// the sizes are known. With flag::kSizesFollow it tells no sizes and no checksum. Source: PKWARE APPNOTE 6.3.10, 4.3.7
std::string localHeaderOf(const NewMember& member);
/// What follows the data with flag::kSizesFollow. Source: 4.3.9
std::string descriptorOf(const NewMember& member);
/// The header in the directory. Source: 4.3.12
std::string centralHeaderOf(const NewMember& member);
/// Another archive's header in the directory, for a member that was copied.
/// @param header  whole, as it was stored
std::string movedHeader(std::string_view header, std::uint64_t localOffset);

/// What stands behind the directory: in the Zip64 form as well where the numbers need it.
/// @param comment  bytes; cut off at 65,535
/// Source: 4.3.14 to 4.3.16
std::string endRecordsOf(std::uint64_t entries, std::uint64_t start, std::uint64_t size, std::string_view comment);

}  // namespace archiver::zip
