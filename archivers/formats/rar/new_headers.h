#pragma once
#include <cstdint>

#include "archivers/formats/input_file.h"
#include "archivers/formats/rar/file_header.h"

namespace archiver::rar {

/// Reads one block of the layout of RAR 5.
/// @return kOk, kNoMoreEntries at the end of the file, kCannotRead when it ends inside the header, kHeaderCrc,
///         kHeaderBroken
/// Source: "RAR 5.0 archive format", the format's public description
ReturnCode readNewBlock(const InputFile& file, std::uint64_t offset, Block& block);

}  // namespace archiver::rar
