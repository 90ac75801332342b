#pragma once
#include <cstdint>
#include <string>

#include "drivers/archive_driver.h"

namespace tovar::host {

/// Appends one member as a line with all its fields, LF at the end.
void appendLine(std::string& out, const ArchiveDriver& driver, std::uint32_t index);

/// Appends one member as a JSON object: path and name as stored, sizes in bytes, ratio in per cent, date and time in
/// the form of ISO 8601 or null, CRC in eight hexadecimal digits.
void appendJsonEntry(std::string& out, const ArchiveDriver& driver, std::uint32_t index);

/// The heading of the lines.
extern const char* const kListHeading;

}  // namespace tovar::host
