#pragma once
#include <cstdint>

namespace tovar {

/// A set of archive kinds: the user's allow-mask ("ArchiverSetting"), the availability mask and the effective mask
/// (allow AND available); as a single bit, the kind of an opened archive. Bit 8 is never used.
using ArchiveKind = std::uint32_t;

namespace kind {
inline constexpr ArchiveKind kNone = 0;
inline constexpr ArchiveKind kCreateZip = 1;
inline constexpr ArchiveKind kCreateLzh = 2;
inline constexpr ArchiveKind kCreateCab = 4;
inline constexpr ArchiveKind kZip = 16;
inline constexpr ArchiveKind kRar = 32;
inline constexpr ArchiveKind kArj = 64;
inline constexpr ArchiveKind kLzh = 128;
inline constexpr ArchiveKind kCab = 256;
inline constexpr ArchiveKind kTar = 512;  ///< TAR, TGZ, GZ, BZ2 and Z
inline constexpr ArchiveKind kAce = 1024;
inline constexpr ArchiveKind kCreating = kCreateZip | kCreateLzh | kCreateCab;
inline constexpr ArchiveKind kReading = kZip | kRar | kArj | kLzh | kCab | kTar | kAce;
}  // namespace kind

}  // namespace tovar
