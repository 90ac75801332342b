#pragma once
#include <cstdint>
#include <filesystem>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// What the SFX flag adds to a good answer: "self-extractor", of kind 1 as no format tells the kinds apart.
inline constexpr std::int32_t kSelfExtractorAnswer = 0x8001;

/// Tells whether a file is an archive that `open` can read; never shows a window.
/// @param mode  depth and flags of check_mode. Members that need a password are not tested, in any mode.
/// @return 1 or 0; kSelfExtractorAnswer where that was asked for; kPasswordFile when the headers themselves are
///         encrypted
std::int32_t checkArchive(OpenFunction open, const std::filesystem::path& file, std::int32_t mode);

/// Counts the members.
/// @return -1 when the file is no readable archive to its end; at most 0x7FFFFFFF
std::int32_t countMembers(OpenFunction open, const std::filesystem::path& file);

}  // namespace archiver
