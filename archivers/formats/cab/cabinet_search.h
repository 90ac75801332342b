#pragma once
#include <cstdint>
#include <optional>

#include "archivers/formats/input_file.h"

namespace archiver::cab {

/// Finds the next place where a cabinet may begin: within the first 64 MiB, as self-extracting programs keep theirs
/// anywhere.
/// @param from  where the search begins
/// @return nullopt when there is none, also when the file cannot be read any further
std::optional<std::uint64_t> findCabinet(const InputFile& file, std::uint64_t from);

}  // namespace archiver::cab
