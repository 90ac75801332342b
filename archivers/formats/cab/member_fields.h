#pragma once
#include <mspack.h>

#include "archivers/formats/archive_reader.h"

namespace archiver::cab {

/// Fills a member. Its name is in UTF-8 where its attributes say so and it is, else in the ANSI code page.
/// @param packed  its packed size
void fillMember(const mscabd_file& file, std::uint64_t packed, Member& member);

}  // namespace archiver::cab
