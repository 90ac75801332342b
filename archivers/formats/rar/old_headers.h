#pragma once
#include <cstdint>

#include "archivers/formats/input_file.h"
#include "archivers/formats/rar/file_header.h"

namespace archiver::rar {

/// Reads one block of the layout of RAR 1.5 to 4.
/// @return kOk, kNoMoreEntries at the end of the file, kCannotRead when it ends inside the header, kHeaderCrc,
///         kHeaderBroken
/// Source: technote.txt of the RAR distribution
ReturnCode readOldBlock(const InputFile& file, std::uint64_t offset, Block& block);

}  // namespace archiver::rar
