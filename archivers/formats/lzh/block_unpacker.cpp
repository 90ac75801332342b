#include "archivers/formats/lzh/block_unpacker.h"

#include "archivers/formats/huffman_lz/packed_source.h"
#include "archivers/formats/lzh/crc16.h"

namespace archiver::lzh {
namespace {

std::uint32_t addToCrc(std::uint32_t crc, const void* bytes, std::size_t size) noexcept {
    return crc16Of({static_cast<const char*>(bytes), size}, static_cast<std::uint16_t>(crc));
}

}  // namespace

std::optional<huffman_lz::BlockShape> blockShapeOf(std::string_view method) noexcept {
    // The window of -lh4- is half as large, but its codes are the same, and nothing forbids them to reach farther.
    if (method == "-lh4-" || method == "-lh5-") return huffman_lz::BlockShape{14, 4};
    if (method == "-lh6-") return huffman_lz::BlockShape{16, 5};
    if (method == "-lh7-") return huffman_lz::BlockShape{17, 5};
    if (method == "-lhx-") return huffman_lz::BlockShape{20, 5};
    return std::nullopt;
}

ReturnCode BlockUnpacker::unpack(const InputFile& file, const Header& header, const huffman_lz::BlockShape& shape,
                                 const DataSink& sink) {
    huffman_lz::PackedSource source(file, header.dataOffset, header.packedSize);
    // Before the start stand blanks, as far as the farthest match reaches.
    window_.start(header.originalSize, {std::size_t{1} << (shape.positions - 1), &addToCrc, ' '}, sink);
    bits_.start(source);
    const ReturnCode code = blocks_.decode(bits_, window_, shape);
    if (code == kUserCancel) return code;
    if (source.failed()) return kCannotRead;
    if (code != kOk) return code;
    return !header.crc || *header.crc == window_.checksum() ? kOk : kFileCrc;
}

}  // namespace archiver::lzh
