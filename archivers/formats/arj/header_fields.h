#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/convention/return_codes.h"

/// Fields of ARJ headers. Source: the published technical notes of the format.
namespace archiver::arj {

/// What stands before every header, lowest byte first.
inline constexpr std::uint16_t kHeaderId = 0xEA60;
inline constexpr std::size_t kLargestHeader = 2600;
/// Fewest bytes before the name.
inline constexpr std::size_t kSmallestFirstPart = 30;

/// Systems, as the format numbers them.
namespace host {
inline constexpr std::uint8_t kMsDos = 0;
inline constexpr std::uint8_t kUnix = 2;
inline constexpr std::uint8_t kOs2 = 5;
inline constexpr std::uint8_t kNext = 8;
inline constexpr std::uint8_t kWindows95 = 10;
inline constexpr std::uint8_t kWin32 = 11;
}  // namespace host

/// Flags of the main header and of file headers.
namespace flag {
inline constexpr std::uint8_t kGarbled = 0x01;
inline constexpr std::uint8_t kAnsiPage = 0x02;   ///< main header
inline constexpr std::uint8_t kContinued = 0x04;  ///< main header: more volumes follow; else: this member goes on there
inline constexpr std::uint8_t kContinuing = 0x08;  ///< file header: this member began in the volume before
inline constexpr std::uint8_t kSlashes = 0x10;     ///< "\" was translated to "/"
}  // namespace flag

enum class FileType : std::uint8_t {
    kBinary = 0,
    kText = 1,
    kMainHeader = 2,
    kFolder = 3,
    kLabel = 4,
    kChapter = 5,
    kUnixSpecial = 6,
};

/// The archive's own header.
struct MainHeader {
    std::uint8_t version = 0;
    std::uint8_t host = 0;
    std::uint8_t flags = 0;
    std::uint8_t encryption = 0;   ///< 0 and 1: the garble of old; 2 to 4: GOST
    std::uint8_t lastChapter = 0;  ///< 0 when the archive has none
    std::string comment;           ///< as stored
};

/// A member's header, or that of its part in one volume.
struct FileHeader {
    std::uint8_t version = 0;
    std::uint8_t host = 0;
    std::uint8_t flags = 0;
    std::uint8_t method = 0;
    FileType type = FileType::kBinary;
    std::uint8_t modifier = 0;  ///< of the password
    std::uint32_t time = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t originalSize = 0;
    std::uint32_t crc = 0;
    std::uint16_t mode = 0;  ///< DOS attributes or UNIX mode
    std::uint8_t firstChapter = 0;
    std::uint8_t lastChapter = 0;
    std::uint32_t position = 0;      ///< of this part in the whole member
    std::uint32_t accessTime = 0;    ///< 0 when not stored
    std::uint32_t creationTime = 0;  ///< 0 when not stored
    std::uint32_t wholeSize = 0;     ///< of the member over all volumes; 0 when not stored
    std::string name;                ///< as stored
    std::string comment;             ///< as stored
    std::uint64_t dataOffset = 0;    ///< in the volume

    [[nodiscard]] bool has(std::uint8_t bit) const noexcept { return (flags & bit) != 0; }
    /// Times of these systems count seconds since 1970-01-01 UTC; others are DOS words in local time.
    [[nodiscard]] bool hasUnixTimes() const noexcept;
};

/// Reads the bytes between a header's size and its checksum.
/// @return whether it is a main header with all it must have
bool parseMainHeader(std::string_view basic, MainHeader& header);

/// Likewise for a file header.
bool parseFileHeader(std::string_view basic, FileHeader& header);

}  // namespace archiver::arj
