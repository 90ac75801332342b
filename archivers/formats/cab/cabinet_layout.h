#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "archivers/convention/return_codes.h"
#include "archivers/formats/moments.h"

namespace archiver {

/// How the data of a new cabinet are packed.
enum class CabinetMethod : std::uint16_t { kStored = 0, kMsZip = 1 };

/// A file that a new cabinet is to hold.
struct CabinetMember {
    std::string name;           ///< UTF-8, "\" between folders, without a drive, "." and ".."
    std::uint64_t size = 0;     ///< bytes that it has; no more are taken
    DosStamp changed;           ///< local time
    std::uint8_t attributes{};  ///< attribute bits; that of folders is left out
};

namespace cab {

inline constexpr std::size_t kHeaderSize = 36;
inline constexpr std::size_t kFolderRowSize = 8;
inline constexpr std::size_t kBlockHeadSize = 8;
inline constexpr std::size_t kBlockSize = 32768;         ///< bytes of content in each block but a folder's last
inline constexpr std::uint64_t kMostBlocks = 65535;      ///< of a folder
inline constexpr std::uint64_t kMostMembers = 65535;     ///< of a cabinet
inline constexpr std::uint64_t kMostBytes = 0xFFFFFFFF;  ///< of a cabinet
inline constexpr std::size_t kMostNameBytes = 255;       ///< without the NUL behind
inline constexpr std::uint64_t kMostFolderBytes = kBlockSize * kMostBlocks;

/// Which members go into which folder of a new cabinet, and how long what stands in front of their data is.
struct CabinetLayout {
    std::vector<std::uint16_t> folders;  ///< of each member
    std::uint16_t folderCount = 0;
    std::uint64_t frontBytes = 0;  ///< header, table of folders and table of members
};

/// Lays a cabinet out: members in their order, a new folder where one would be longer than the format allows.
/// @return kOk; kTooManyFiles; kLongFileName for a name of more than 255 bytes; kNotFilename for none; kTooBig for a
///         member that fits into no folder
/// Source: Microsoft Cabinet Format, CFHEADER, CFFOLDER, CFFILE
ReturnCode layOut(const std::vector<CabinetMember>& members, CabinetLayout& layout);

/// Whether a member can be in a cabinet at all.
/// @return kOk, kLongFileName, kNotFilename or kTooBig
ReturnCode checkMember(const CabinetMember& member) noexcept;

}  // namespace cab
}  // namespace archiver
