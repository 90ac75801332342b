#pragma once
#include <string>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/arj/header_fields.h"

namespace archiver::arj {

/// Fills a member from its header; sizes and checksum are those of the header's own part.
void fillMember(const MainHeader& main, const FileHeader& header, Member& member);

/// Reads a text of the archive: UTF-8 where it is that, else in the code page of the system that wrote it.
std::string readText(const MainHeader& main, std::uint8_t host, std::string_view stored);

/// The convention's number of a system.
std::uint32_t osTypeOf(std::uint8_t host) noexcept;

/// "Stored", "Method1" to "Method4", or "Unknown".
const char* methodText(std::uint8_t method) noexcept;

}  // namespace archiver::arj
