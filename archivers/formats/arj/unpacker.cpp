#include "archivers/formats/arj/unpacker.h"

#include "archivers/formats/arj/checksum.h"
#include "archivers/formats/arj/fastest_decoder.h"

namespace archiver::arj {
namespace {

/// Archivers use 26,624 bytes. Nothing stands before the start.
constexpr huffman_lz::WindowKind kWindow{std::size_t{32} * 1024, &crc32Of, std::nullopt};
/// Those of LZH's -lh7-.
constexpr huffman_lz::BlockShape kBlocks{17, 5};

}  // namespace

/// Takes stored bytes over.
ReturnCode Unpacker::copy(PackedSource& source) {
    while (!window_.complete()) {
        unsigned char* const at = window_.at();
        const std::size_t got = source.read(at, static_cast<std::size_t>(window_.limit() - at));
        if (source.failed()) {
            window_.abandon(at + got);
            return kCannotRead;
        }
        if (!window_.commit(at + got)) return kUserCancel;
    }
    return kOk;
}

ReturnCode Unpacker::decode(PackedSource& source, const Part& part) {
    switch (part.method) {
        case 0:
            return part.packedSize == part.originalSize ? copy(source) : kHeaderBroken;
        case 1:
        case 2:
        case 3:
            bits_.start(source);
            return blocks_.decode(bits_, window_, kBlocks);
        case 4:
            bits_.start(source);
            return decodeFastest(bits_, window_);
        default:
            return kMethod;
    }
}

ReturnCode Unpacker::unpack(const InputFile& volume, const Part& part, std::string_view password,
                            const DataSink& sink) {
    PackedSource source(volume, part, password);
    window_.start(part.originalSize, kWindow, sink);
    const ReturnCode code = decode(source, part);
    if (code != kOk) return code;
    return window_.checksum() == part.crc ? kOk : kFileCrc;
}

}  // namespace archiver::arj
