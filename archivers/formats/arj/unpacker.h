#pragma once
#include <string_view>

#include "archivers/formats/arj/bit_reader.h"
#include "archivers/formats/arj/block_decoder.h"
#include "archivers/formats/arj/output_window.h"
#include "archivers/formats/arj/part.h"

namespace archiver::arj {

/// Unpacks parts of members. Its memory, some 300 KB, serves one part after the other.
class Unpacker {
public:
    /// Unpacks one part and checks its CRC-32.
    /// @param password  for a garbled part; not empty
    /// @return kOk, kMethod, kHuffmanCode, kFileCrc, kCannotRead when the file ends too early or cannot be read,
    ///         kHeaderBroken when the sizes contradict each other, kUserCancel
    ReturnCode unpack(const InputFile& volume, const Part& part, std::string_view password, const DataSink& sink);

private:
    ReturnCode decode(PackedSource& source, const Part& part);
    ReturnCode copy(PackedSource& source);

    BitReader bits_;
    OutputWindow window_;
    BlockDecoder blocks_;
};

}  // namespace archiver::arj
