#pragma once
#include <cstdint>
#include <ctime>
#include <optional>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// A local date and time in the packed words of MS-DOS.
struct DosStamp {
    std::uint16_t date = 0;  ///< day in bits 0-4, month 5-8, year - 1980 9-15
    std::uint16_t time = 0;  ///< seconds / 2 in bits 0-4, minute 5-10, hour 11-15
    bool operator==(const DosStamp&) const = default;
};

/// The packed words of a moment in the local time zone; odd seconds are rounded down.
/// The words reach from 1980-01-01 00:00:00 to 2107-12-31 23:59:58: an earlier or later moment becomes the nearest one.
/// A moment that the system cannot convert becomes the earliest.
/// Source: Windows SDK documentation, DosDateTimeToFileTime
DosStamp dosStampOf(const Moment& moment) noexcept;

/// The moment of packed words in the local time zone.
/// @return nullopt when they are no date or no time of day, or when the system cannot tell
std::optional<Moment> momentOfDosStamp(const DosStamp& stamp) noexcept;

/// A Windows file time: steps of 100 nanoseconds since 1601-01-01 00:00:00 UTC.
Moment momentOfFileTime(std::uint64_t fileTime) noexcept;

/// Calendar fields in the local time zone. Implemented in win32/ and posix/.
/// @param seconds  since 1970-01-01 00:00:00 UTC
/// @return nullopt when the system cannot tell
std::optional<std::tm> localCalendar(std::int64_t seconds) noexcept;

}  // namespace archiver
