#pragma once
#include <cstdint>

#include "archivers/formats/ace/ace_reader.h"
#include "archivers/formats/ace/headers.h"

namespace archiver::ace {

/// The convention's number of the system that made an archive.
/// @param host  number in the main header
std::uint32_t osTypeOf(std::uint8_t host) noexcept;

/// Fills a member's record from its header. Packed size and CRC of a member in parts are those of this header.
/// @param host  number of the system in the main header, which tells the name's code page
void fillMember(const FileHeader& header, std::uint8_t host, Member& member);

/// Fills the fields as stored; the comment is unpacked.
void fillHeader(const FileHeader& header, AceHeader& filled);
void fillFacts(const MainHeader& header, AceFacts& facts);

}  // namespace archiver::ace
