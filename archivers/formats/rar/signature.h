#pragma once
#include <cstdint>

#include "archivers/formats/input_file.h"
#include "archivers/formats/rar/file_header.h"

namespace archiver::rar {

/// Where an archive begins in a file.
struct Start {
    ReturnCode code = kOk;
    Generation generation = Generation::kOld;
    std::uint64_t offset = 0;  ///< of the signature; above 0 behind a program
    std::uint64_t blocks = 0;  ///< of the first block
};

/// Finds the signature, at the file's start or in the first 2 MiB of one that starts as a program for Windows, MS-DOS
/// or UNIX.
/// @return code kFileStyle when there is none, kCannotRead
Start findStart(const InputFile& file);

/// Reads a block of either layout; see readOldBlock and readNewBlock.
ReturnCode readBlock(Generation generation, const InputFile& file, std::uint64_t offset, Block& block);

}  // namespace archiver::rar
