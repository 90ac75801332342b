#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>

#include "archivers/formats/archive_reader.h"

/// What the exported functions need to know of the system. Implemented in win32/ and posix/.
namespace archiver {

/// A local moment in the packed form of MS-DOS, in steps of two seconds.
/// Source: Windows SDK documentation, DosDateTimeToFileTime.
struct DosMoment {
    std::uint16_t date = 0;  ///< day in bits 0-4, month 5-8, year - 1980 9-15
    std::uint16_t time = 0;  ///< seconds / 2 in bits 0-4, minute 5-10, hour 11-15
};

/// @return nullopt for fields that are no date or no time
std::optional<Moment> utcOfLocal(DosMoment local) noexcept;

/// @return the earliest or the last moment that the packed form can hold, when it can not hold this one
DosMoment localOfUtc(Moment moment) noexcept;

/// When the file was changed last; nullopt when that can not be told.
std::optional<Moment> lastWriteTime(const std::filesystem::path& file) noexcept;

/// The form in which two characters that differ by their case alone are equal; one character becomes one.
char32_t foldCase(char32_t character) noexcept;

}  // namespace archiver
