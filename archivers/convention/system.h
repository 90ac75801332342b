#pragma once
#include <filesystem>
#include <optional>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/letter_case.h"
#include "archivers/formats/moments.h"

/// What the exported functions need to know of the system. Implemented in win32/ and posix/.
namespace archiver {

/// @return nullopt for fields that are no date or no time
std::optional<Moment> utcOfLocal(DosStamp local) noexcept;

/// When the file was changed last; nullopt when that can not be told.
std::optional<Moment> lastWriteTime(const std::filesystem::path& file) noexcept;

}  // namespace archiver
