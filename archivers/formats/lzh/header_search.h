#pragma once
#include <cstdint>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::lzh {

/// Finds the first header: at the beginning, or behind a self-extracting program of up to 512 KiB.
/// @param start  its offset when the answer is kOk
/// @return kOk; kFileStyle when there is none; kHeaderCrc and kHeaderBroken when the file begins with one that is
///         damaged; kCannotRead
ReturnCode findFirstHeader(const InputFile& file, std::uint64_t& start);

}  // namespace archiver::lzh
