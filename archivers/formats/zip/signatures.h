#pragma once
#include <cstddef>
#include <cstdint>

/// Record signatures and the sizes of their fixed parts. Source: PKWARE APPNOTE 6.3.10, 4.3
namespace archiver::zip {

inline constexpr std::uint32_t kLocalSignature = 0x04034B50;
inline constexpr std::uint32_t kCentralSignature = 0x02014B50;
inline constexpr std::uint32_t kEndSignature = 0x06054B50;
inline constexpr std::uint32_t kZip64EndSignature = 0x06064B50;
inline constexpr std::uint32_t kZip64LocatorSignature = 0x07064B50;
inline constexpr std::uint32_t kSpannedSignature = 0x08074B50;       ///< at the start of a volume set
inline constexpr std::uint32_t kSingleVolumeSignature = 0x30304B50;  ///< a set that turned out to be one volume

inline constexpr std::uint16_t kAesMethod = 99;  ///< the packed data's own method is in the AES field

/// Bits of the general purpose flags. Source: PKWARE APPNOTE 6.3.10, 4.4.4
namespace flag {
inline constexpr std::uint16_t kEncrypted = 1 << 0;
inline constexpr std::uint16_t kSizesFollow = 1 << 3;  ///< checksum and sizes stand behind the data
inline constexpr std::uint16_t kStrongEncryption = 1 << 6;
inline constexpr std::uint16_t kUtf8 = 1 << 11;
inline constexpr std::uint16_t kMaskedHeaders = 1 << 13;
}  // namespace flag

inline constexpr std::size_t kLocalSize = 30;
inline constexpr std::size_t kCentralSize = 46;
inline constexpr std::size_t kEndSize = 22;
inline constexpr std::size_t kZip64EndSize = 56;
inline constexpr std::size_t kZip64LocatorSize = 20;
inline constexpr std::size_t kLargestComment = 0xFFFF;

}  // namespace archiver::zip
