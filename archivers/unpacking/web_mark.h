#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace archiver {

inline constexpr std::size_t kLongestWebMark = 1 << 16;  ///< bytes that are looked at

/// What passes from a downloaded archive's mark to the files that come out of it: the zone and, where they are there,
/// the addresses it came from.
///
/// The mark is a text of lines "ZoneId=3" below "[ZoneTransfer]", in a stream "Zone.Identifier" of the archive. Zones
/// 0 to 2 are trusted and pass nothing on, as does a text that is no mark: whatever is in the stream is not copied as
/// it is. An address with control characters, or longer than 2083 bytes, is left out. Source: Windows documentation,
/// "Zone.Identifier Stream Name"; URLZONE of the Windows SDK
/// @return the mark of the files; empty when they get none
std::string passedWebMark(std::string_view archiveMark);

}  // namespace archiver
