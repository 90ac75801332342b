#pragma once
#include <cstdint>

#include "archivers/formats/legacy_text.h"

namespace archiver::zip {

/// Systems that a header names as its maker. Source: PKWARE APPNOTE 6.3.10, 4.4.2; Info-ZIP gives NTFS the number 11.
namespace system {
inline constexpr int kFat = 0;
inline constexpr int kUnix = 3;
inline constexpr int kHpfs = 6;
inline constexpr int kNtfs = 10;
inline constexpr int kInfoZipNtfs = 11;
inline constexpr int kVfat = 14;
inline constexpr int kMacOs = 19;
}  // namespace system

/// The convention's number for the system (os_type).
std::uint32_t osTypeOf(int system) noexcept;

/// The code page of names that the system's programs write without saying which.
LegacyPage legacyPageOf(int system) noexcept;

/// Whether the upper half of the external attributes holds a Unix file mode.
constexpr bool hasUnixMode(int system) noexcept { return system == system::kUnix || system == system::kMacOs; }

}  // namespace archiver::zip
