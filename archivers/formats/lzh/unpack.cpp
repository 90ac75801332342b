#include "archivers/formats/lzh/unpack.h"

#include <lhasa.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include "archivers/formats/lzh/mac_binary.h"

namespace archiver::lzh {
namespace {

constexpr std::size_t kPiece = 64 * 1024;

/// A member's packed bytes, in pieces of any size; its decoders ask for four at a time.
class PackedBytes {
public:
    PackedBytes(const InputFile& file, const Header& header)
        : file_(file), offset_(header.dataOffset), left_(header.packedSize), buffer_(kPiece) {}

    [[nodiscard]] bool failed() const noexcept { return failed_; }

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
        at_ = filled_ = 0;
        if (left_ == 0) return pad();
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left_, buffer_.size()));
        filled_ = file_.readAt(offset_, std::span<char>(buffer_.data(), wanted)).value_or(0);
        if (filled_ < wanted) failed_ = true;
        // What came before the end of the file is still worth unpacking.
        offset_ += filled_;
        left_ = failed_ ? 0 : left_ - filled_;
        return filled_ > 0;
    }

    /// Decoders look at some bits more than they use; the format has zeros there.
    bool pad() noexcept {
        constexpr std::size_t kZeros = 4;
        if (padded_ || failed_) return false;
        padded_ = true;
        std::fill_n(buffer_.begin(), kZeros, '\0');
        filled_ = kZeros;
        return true;
    }

    const InputFile& file_;
    std::uint64_t offset_;
    std::uint64_t left_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    bool failed_ = false;
    bool padded_ = false;
};

struct FreeDecoder {
    void operator()(LHADecoder* decoder) const noexcept { ::lha_decoder_free(decoder); }
};

bool isStored(std::string_view method) noexcept { return method == "-lh0-" || method == "-lz4-" || method == "-pm0-"; }

ReturnCode decode(const InputFile& file, const Header& header, const DataSink& sink) {
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

}  // namespace

ReturnCode unpack(const InputFile& file, const Header& header, const DataSink& sink) {
    if (header.system != 'm') return decode(file, header, sink);
    const std::size_t folder = header.name.find_last_of("/\\");
    MacBinaryFilter filter(header.name.substr(folder == std::string::npos ? 0 : folder + 1), header.originalSize, sink);
    return decode(file, header, [&filter](const char* bytes, std::size_t size) { return filter(bytes, size); });
}

}  // namespace archiver::lzh
