#pragma once
#include <cstdint>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/zip/member_fields.h"

namespace archiver::zip {

/// Unpacks one member and checks its size and checksum.
/// @param localHeader  offset of its local header in the file
/// @return kOk, kPasswordFile, kMethod, kHeaderBroken when no local header stands there, kCannotRead when the data ends
///         too early, kFileCrc when it is not what was packed, kUserCancel, kEnoughMemory
ReturnCode unpackMember(const InputFile& file, std::uint64_t localHeader, const MemberData& data, const DataSink& sink);

}  // namespace archiver::zip
