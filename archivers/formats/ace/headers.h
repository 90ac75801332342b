#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "archivers/convention/return_codes.h"

namespace archiver::ace {

/// Kinds of headers.
enum class HeaderType : std::uint8_t {
    kMain = 0,
    kFile = 1,
    kRecovery = 2,
    kFile64 = 3,
    kRecovery64 = 4,
    kRecovery64Sectors = 5,
};

namespace main_flag {
inline constexpr std::uint16_t kComment = 0x0002;
inline constexpr std::uint16_t kMultiVolume = 0x0800;
inline constexpr std::uint16_t kAdvert = 0x1000;
inline constexpr std::uint16_t kSolid = 0x8000;
}  // namespace main_flag

namespace file_flag {
inline constexpr std::uint16_t kData = 0x0001;
inline constexpr std::uint16_t kComment = 0x0002;
inline constexpr std::uint16_t kLarge = 0x0004;
inline constexpr std::uint16_t kSecurity = 0x0400;
inline constexpr std::uint16_t kFromPreviousVolume = 0x1000;
inline constexpr std::uint16_t kInNextVolume = 0x2000;
inline constexpr std::uint16_t kPassword = 0x4000;
inline constexpr std::uint16_t kSolid = 0x8000;
}  // namespace file_flag

/// Bytes of a header's first fields: checksum, size, type and flags.
inline constexpr std::size_t kSmallestHeader = 7;
/// Where the magic stands, counted from the start of the main header.
inline constexpr std::size_t kMagicOffset = 7;
inline constexpr char kMagic[] = "**ACE**";
inline constexpr std::size_t kMagicSize = sizeof kMagic - 1;

/// The header in front of an archive or a volume.
struct MainHeader {
    std::uint16_t flags = 0;
    std::uint8_t versionNeeded = 0;  ///< 10 or 20
    std::uint8_t versionMadeBy = 0;
    std::uint8_t host = 0;  ///< number of the system that made the archive
    std::uint8_t volume = 0;
    std::uint32_t stamp = 0;    ///< DOS date in the high word, time in the low word
    std::string advert;         ///< bytes as stored
    std::string packedComment;  ///< empty without a comment
};

/// The header in front of a member's data.
struct FileHeader {
    std::uint16_t flags = 0;
    std::uint64_t packedSize = 0;  ///< bytes of data that follow this very header
    std::uint64_t originalSize = 0;
    std::uint32_t stamp = 0;  ///< DOS date in the high word, time in the low word
    std::uint32_t attributes = 0;
    std::uint32_t checksum = 0;  ///< of the original data, in the form of this format
    std::uint8_t method = 0;
    std::uint8_t quality = 0;
    std::uint16_t parameters = 0;
    std::string name;              ///< bytes as stored
    std::string packedComment;     ///< empty without a comment
    std::uint64_t dataOffset = 0;  ///< in its volume's file

    [[nodiscard]] bool has(std::uint16_t flag) const noexcept { return (flags & flag) != 0; }
    [[nodiscard]] bool folder() const noexcept { return (attributes & 0x10) != 0; }
};

/// Any header, its checksum found right.
struct RawHeader {
    HeaderType type = HeaderType::kMain;
    std::uint16_t flags = 0;
    std::span<const char> bytes;  ///< the whole header, from its checksum on
};

/// Bytes of the header that starts here, as its second field claims: from 4 to 65,539.
/// @param start  at least 4 bytes
std::size_t headerSize(const char* start) noexcept;

/// Checks a header as a whole.
/// @param bytes  exactly the header
/// @return kOk, kHeaderBroken when it is too short to be one, kHeaderCrc
ReturnCode checkHeader(std::span<const char> bytes, RawHeader& header) noexcept;

/// Reads a main header. Bytes behind the known fields are left alone.
/// @return kOk, or kHeaderBroken when it is none or its fields do not fit
ReturnCode parseMainHeader(const RawHeader& raw, MainHeader& header);

/// Reads a header of type file, but for dataOffset.
/// @return kOk, or kHeaderBroken when its fields do not fit
ReturnCode parseFileHeader(const RawHeader& raw, FileHeader& header);

/// Bytes of data that follow a header that is not of type file.
/// @return kOk, or kHeaderBroken when the header has no room for the number it promises
ReturnCode skippedSize(const RawHeader& raw, std::uint64_t& size) noexcept;

}  // namespace archiver::ace
