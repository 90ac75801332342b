#pragma once
#include "archivers/formats/archive_reader.h"
#include "archivers/formats/lzh/header.h"

namespace archiver::lzh {

/// Fills a member from its header. The checksum is the CRC-16 as stored, 0 where the oldest archives have none.
void fillMember(const Header& header, Member& member);

/// The convention's number of a system's letter.
std::uint32_t osTypeOf(std::uint8_t system) noexcept;

}  // namespace archiver::lzh
