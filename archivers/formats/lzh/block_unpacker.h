#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

#include "archivers/formats/huffman_lz/bit_reader.h"
#include "archivers/formats/huffman_lz/block_decoder.h"
#include "archivers/formats/huffman_lz/output_window.h"
#include "archivers/formats/lzh/header.h"

namespace archiver::lzh {

/// Shape of a method's blocks: of -lh4- to -lh7- and -lhx-; nullopt for every other method.
/// Source: public descriptions of the LHA methods
std::optional<huffman_lz::BlockShape> blockShapeOf(std::string_view method) noexcept;

/// Unpacks members whose methods have such blocks. Its memory, some 350 KB, or 800 KB once it met -lhx-, serves one
/// member after the other.
class BlockUnpacker {
public:
    /// Unpacks a member and checks its CRC.
    /// @return kOk, kHuffmanCode, kFileCrc, kUserCancel; kCannotRead when the file ends within the packed bytes or
    ///         cannot be read
    ReturnCode unpack(const InputFile& file, const Header& header, const huffman_lz::BlockShape& shape,
                      const DataSink& sink);

private:
    huffman_lz::BitReader bits_;
    huffman_lz::OutputWindow window_;
    huffman_lz::BlockDecoder blocks_;
};

}  // namespace archiver::lzh
