#pragma once
#include <optional>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/tar/byte_stream.h"

namespace archiver::tar {

/// Tells by its first bytes how a file is compressed.
/// @return kHeaderBroken when the bytes that follow the magic cannot be right
struct CompressionResult {
    ReturnCode code = kOk;
    Compression compression = Compression::kNone;
};
CompressionResult recogniseCompression(const InputFile& file);

/// What a stream holds.
enum class Contents { kTar, kOther };

/// Tells a tar by the checksum of its first header, or by its being nothing but the two blocks or more of zeros that
/// end one. Zeros followed by something else, or more than 1 MiB of them, are no tar: disk images begin so.
/// @return kOther also when the stream breaks off before it can be told
Contents recogniseContents(ByteStream& stream);

}  // namespace archiver::tar
