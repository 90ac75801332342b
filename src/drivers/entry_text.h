#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "shell/regional.h"

namespace tovar {

// The texts of an entry's fields, made from its numbers. An original or packed size is a groupedNumber as it stands.

/// Per mille as per cent with one decimal: 425 is "42.5%".
[[nodiscard]] std::wstring ratioText(std::int16_t perMille, const RegionalSettings& regional);

/// Date of a DOS date word: bits 0-4 day, 5-8 month, 9-15 years since 1980.
/// @return nullopt when it is no day of the calendar
/// Source: Windows SDK documentation, DosDateTimeToFileTime
[[nodiscard]] std::optional<CalendarDate> calendarDateOf(std::uint16_t dosDate) noexcept;

/// Time of a DOS time word: bits 0-4 two-second steps, 5-10 minutes, 11-15 hours.
/// @return the second is the number of two-second steps, not doubled; nullopt for an hour above 23, a minute above
///         59 or a step above 29
/// Source: Windows SDK documentation, DosDateTimeToFileTime
[[nodiscard]] std::optional<ClockTime> clockTimeOf(std::uint16_t dosTime) noexcept;

/// A date word as a text that can hold any of its values: years since 1900, month and day, such as "101-05-17" for
/// 2001.
[[nodiscard]] std::wstring storedDateText(std::uint16_t dosDate);

/// "yy/mm/dd" with the system's date separator; the stored form of a word that is no date.
[[nodiscard]] std::wstring dateText(std::uint16_t dosDate, const RegionalSettings& regional);

/// "17:30:29"; the last part counts steps of two seconds.
[[nodiscard]] std::wstring timeText(std::uint16_t dosTime);

/// The last four hexadecimal digits, upper case.
[[nodiscard]] std::wstring crcText(std::uint32_t crc);

}  // namespace tovar
