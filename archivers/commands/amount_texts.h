#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "archivers/formats/archive_reader.h"

/// How amounts are told to a user. The results are ASCII.
namespace archiver {

/// Three digits and a unit: "0 bytes", "1 byte", "1,023 bytes", "1.18 MB". A unit is 1024 of the one before it, as the
/// system's file manager counts; digits beyond the third are cut off, so that nothing looks larger than it is.
std::string sizeText(std::uint64_t bytes);

/// All digits too: "1,234,567 bytes (1.17 MB)"; below 1024 bytes as sizeText.
std::string exactSizeText(std::uint64_t bytes);

/// "5.67 MB/s".
std::string rateText(std::uint64_t bytesPerSecond);

/// "less than a second", "12 seconds", "1 minute 20 seconds", "12 minutes", "3 hours 20 minutes", "more than a day".
/// The longer the coarser: from 10 minutes on without seconds.
std::string durationText(std::uint64_t seconds);

/// "2026-11-20 14:03:05" in the local time zone; "unknown" when there is none or it is out of the calendar.
std::string timeText(const std::optional<Moment>& moment);

}  // namespace archiver
