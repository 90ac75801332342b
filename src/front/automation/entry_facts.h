#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "drivers/archive_driver.h"

namespace tovar {

// What a program is told of one entry of a listing. All throw std::out_of_range for an index outside the listing.

/// The entry's path inside the archive, as operations on members take it: "\" between folders, none at the start; a
/// folder has one at its end.
[[nodiscard]] std::wstring entryPath(const ArchiveDriver& driver, std::uint32_t index);
/// The last part of the path, without a separator.
[[nodiscard]] std::wstring entryName(const ArchiveDriver& driver, std::uint32_t index);
[[nodiscard]] bool entryIsFolder(const ArchiveDriver& driver, std::uint32_t index);

/// Days since 1899-12-30, midnight, local time, as automation counts them; nullopt for an entry without a date. One
/// whose time is none is of midnight.
/// Source: documentation of the automation type DATE
[[nodiscard]] std::optional<double> entryDate(const ArchiveDriver& driver, std::uint32_t index);

}  // namespace tovar
