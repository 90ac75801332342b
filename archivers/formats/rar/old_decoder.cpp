#include "archivers/formats/rar/old_decoder.h"

#include <utility>

#include "archivers/formats/rar/checksum.h"

namespace archiver::rar {

OldDecoder::OldDecoder(VolumeSet& volumes, FileSource files)
    : files_(std::move(files)), bytes_(volumes), unpacker_(bytes_) {}

ReturnCode OldDecoder::next(const DataSink& progress) {
    if (packed_) {
        const DataSink drop = [&progress](const char*, std::size_t) { return progress("", 0); };
        if (const ReturnCode code = unpacker_.unpack(drop); code != kOk) return code;
        if (const ReturnCode code = unpacker_.finish(); code != kOk) return code;
    }
    PackedFile file;
    if (!files_(file)) return kCannotRead;
    bytes_.open(std::move(file.parts));
    packed_ = file.header.method != kStored;
    // The first one of a group has nothing before it, even when its header says so.
    if (packed_) unpacker_.begin(file.header.solid && count_ > 0, file.header.originalSize);
    ++count_;
    return kOk;
}

ReturnCode OldDecoder::read(const FileHeader& header, const DataSink& sink) {
    std::uint32_t crc = 0;
    const DataSink counted = [&crc, &sink](const char* bytes, std::size_t size) {
        crc = addToCrc(crc, bytes, size);
        return sink(bytes, size);
    };
    const ReturnCode code = packed_ ? unpacker_.unpack(counted) : copy(header.originalSize, counted);
    if (code != kOk) return code;
    return !header.hasCrc || crc == header.crc ? kOk : kFileCrc;
}

ReturnCode OldDecoder::copy(std::uint64_t size, const DataSink& sink) {
    for (;;) {
        std::span<const char> piece;
        if (const ReturnCode code = bytes_.next(piece); code != kOk) return code;
        if (piece.empty()) return size == 0 ? kOk : kHuffmanCode;
        if (piece.size() > size) return kHuffmanCode;
        size -= piece.size();
        if (!sink(piece.data(), piece.size())) return kUserCancel;
    }
}

}  // namespace archiver::rar
