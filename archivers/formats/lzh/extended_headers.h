#pragma once
#include <cstddef>
#include <string>

#include "archivers/formats/lzh/header.h"

namespace archiver::lzh {

/// Reads the chain of extended headers that a whole header holds. A CRC among them is set to zero in `bytes`, as it was
/// when it was made.
/// @param bytes  the whole header
/// @param at     where the size of the first extended header stands
/// @param width  bytes of a size: 2 or 4
/// @return kOk, kHeaderBroken, kHeaderCrc
ReturnCode readExtendedHeaders(std::string& bytes, std::size_t at, std::size_t width, Header& header);

}  // namespace archiver::lzh
