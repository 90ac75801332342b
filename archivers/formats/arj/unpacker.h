#pragma once
#include <string_view>

#include "archivers/formats/arj/packed_source.h"
#include "archivers/formats/arj/part.h"
#include "archivers/formats/huffman_lz/bit_reader.h"
#include "archivers/formats/huffman_lz/block_decoder.h"
#include "archivers/formats/huffman_lz/output_window.h"

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

    huffman_lz::BitReader bits_;
    huffman_lz::OutputWindow window_;
    huffman_lz::BlockDecoder blocks_;
};

}  // namespace archiver::arj
