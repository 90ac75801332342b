#pragma once
#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/lzh/block_unpacker.h"
#include "archivers/formats/lzh/header.h"
#include "archivers/formats/object_pool.h"

namespace archiver::lzh {

/// Unpacks a member and checks its CRC.
/// @param blockUnpackers  for the methods with blocks
/// @return kOk; kMethod for one that is not known; kNotSupport for a size that the system cannot count, with old
/// methods; kHuffmanCode
///         for packed data that ends early or makes no sense; kFileCrc; kCannotRead, also when the file ends within the
///         member; kUserCancel
ReturnCode unpack(const InputFile& file, const Header& header, ObjectPool<BlockUnpacker>& blockUnpackers,
                  const DataSink& sink);

}  // namespace archiver::lzh
