#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::cab {

/// What has to be known of a cabinet before it is read whole.
struct CabinetHeader {
    std::uint16_t setId = 0;
    std::uint16_t index = 0;  ///< in its set, from 0
    std::uint16_t files = 0;
    std::string previous;  ///< name of the cabinet before; bytes in the system's code page; empty when there is none
    std::string next;
    std::vector<std::uint64_t> folderSizes;  ///< packed bytes of each folder in this cabinet
};

/// Reads a cabinet's header and its table of folders.
/// @param base  where in the file it begins
/// @return kOk; kFileStyle when there is none; kHeaderBroken; kTooManyFiles for a claim that no cabinet comes near;
///         kCannotRead
/// Source: Microsoft Cabinet Format, CFHEADER and CFFOLDER
ReturnCode readCabinetHeader(const InputFile& file, std::uint64_t base, CabinetHeader& header);

}  // namespace archiver::cab
