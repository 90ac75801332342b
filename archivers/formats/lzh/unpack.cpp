#include "archivers/formats/lzh/unpack.h"

#include <lhasa.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include "archivers/formats/huffman_lz/packed_source.h"
#include "archivers/formats/lzh/mac_binary.h"

namespace archiver::lzh {
namespace {

constexpr std::size_t kPiece = 64 * 1024;

/// A member's packed bytes, in pieces of any size; its decoders ask for four at a time.
class PackedBytes {
public:
    PackedBytes(const InputFile& file, const Header& header)
        : source_(file, header.dataOffset, header.packedSize), buffer_(kPiece) {}

    [[nodiscard]] bool failed() const noexcept { return source_.failed(); }

    static std::size_t read(void* into, std::size_t size, void* self) noexcept {
        return static_cast<PackedBytes*>(self)->readSome(static_cast<char*>(into), size);
    }

private:
    /// Gives fewer bytes than asked for only at the end: what decoders read in one go they do not read in two.
    std::size_t readSome(char* into, std::size_t size) noexcept {
        std::size_t done = 0;
        while (done < size && (at_ < filled_ || fill())) {
            const std::size_t count = std::min(size - done, filled_ - at_);
            std::memcpy(into + done, buffer_.data() + at_, count);
            at_ += count;
            done += count;
        }
        return done;
    }

    bool fill() noexcept {
        at_ = 0;
        if (source_.left() == 0) return pad();
        // What came before the end of the file is still worth unpacking.
        filled_ = source_.read(reinterpret_cast<unsigned char*>(buffer_.data()), buffer_.size());
        return filled_ > 0;
    }

    /// Decoders look at some bits more than they use; the format has zeros there.
    bool pad() noexcept {
        constexpr std::size_t kZeros = 4;
        filled_ = 0;
        if (padded_ || source_.failed()) return false;
        padded_ = true;
        std::fill_n(buffer_.begin(), kZeros, '\0');
        filled_ = kZeros;
        return true;
    }

    huffman_lz::PackedSource source_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    bool padded_ = false;
};

struct FreeDecoder {
    void operator()(LHADecoder* decoder) const noexcept { ::lha_decoder_free(decoder); }
};

bool isStored(std::string_view method) noexcept { return method == "-lh0-" || method == "-lz4-" || method == "-pm0-"; }

/// Unpacks the methods of old.
ReturnCode decodeOld(const InputFile& file, const Header& header, const DataSink& sink) {
    std::string method = header.method;
    LHADecoderType* const type = ::lha_decoder_for_name(method.data());
    if (type == nullptr) return kMethod;
    if (header.originalSize > std::numeric_limits<std::size_t>::max()) return kNotSupport;
    if (isStored(method) && header.packedSize < header.originalSize) return kHeaderBroken;

    PackedBytes source(file, header);
    auto left = static_cast<std::size_t>(header.originalSize);
    const std::unique_ptr<LHADecoder, FreeDecoder> decoder(::lha_decoder_new(type, &PackedBytes::read, &source, left));
    if (!decoder) throw std::bad_alloc();
    std::vector<char> piece(std::min(left, kPiece));
    while (left > 0) {
        const std::size_t wanted = std::min(left, piece.size());
        const std::size_t got =
            ::lha_decoder_read(decoder.get(), reinterpret_cast<std::uint8_t*>(piece.data()), wanted);
        if (got > 0 && !sink(piece.data(), got)) return kUserCancel;
        left -= got;
        if (got < wanted) break;
    }
    if (source.failed()) return kCannotRead;
    if (left > 0) return kHuffmanCode;
    return !header.crc || *header.crc == ::lha_decoder_get_crc(decoder.get()) ? kOk : kFileCrc;
}

ReturnCode decode(const InputFile& file, const Header& header, ObjectPool<BlockUnpacker>& blockUnpackers,
                  const DataSink& sink) {
    if (const auto shape = blockShapeOf(header.method))
        return blockUnpackers.take()->unpack(file, header, *shape, sink);
    return decodeOld(file, header, sink);
}

}  // namespace

ReturnCode unpack(const InputFile& file, const Header& header, ObjectPool<BlockUnpacker>& blockUnpackers,
                  const DataSink& sink) {
    if (header.system != 'm') return decode(file, header, blockUnpackers, sink);
    const std::size_t folder = header.name.find_last_of("/\\");
    MacBinaryFilter filter(header.name.substr(folder == std::string::npos ? 0 : folder + 1), header.originalSize, sink);
    return decode(file, header, blockUnpackers,
                  [&filter](const char* bytes, std::size_t size) { return filter(bytes, size); });
}

}  // namespace archiver::lzh
