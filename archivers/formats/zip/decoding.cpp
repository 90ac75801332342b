#include "archivers/formats/zip/decoding.h"

#include <bzlib.h>
#include <libdeflate.h>
#include <zlib.h>

#include <memory>
#include <new>

namespace archiver::zip {
namespace {

constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kBzip2 = 12;

enum class Step { kGoOn, kEnd, kStuck, kDamaged, kNoMemory };

/// zlib's inflate, without a header.
class Inflate {
public:
    Inflate() {
        if (::inflateInit2(&stream_, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
    }
    ~Inflate() { ::inflateEnd(&stream_); }
    Inflate(const Inflate&) = delete;
    Inflate& operator=(const Inflate&) = delete;

    void give(std::span<const char> input) noexcept {
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));  // zlib does not write there
        stream_.avail_in = static_cast<uInt>(input.size());
    }
    Step run(std::span<char> output, std::size_t& written) noexcept {
        stream_.next_out = reinterpret_cast<Bytef*>(output.data());
        stream_.avail_out = static_cast<uInt>(output.size());
        const int result = ::inflate(&stream_, Z_NO_FLUSH);
        written = output.size() - stream_.avail_out;
        switch (result) {
            case Z_OK:
                return Step::kGoOn;
            case Z_STREAM_END:
                return Step::kEnd;
            case Z_BUF_ERROR:
                return Step::kStuck;
            case Z_MEM_ERROR:
                return Step::kNoMemory;
            default:
                return Step::kDamaged;
        }
    }
    [[nodiscard]] bool wantsInput() const noexcept { return stream_.avail_in == 0; }

private:
    z_stream stream_{};
};

class Bunzip2 {
public:
    Bunzip2() {
        if (::BZ2_bzDecompressInit(&stream_, 0, 0) != BZ_OK) throw std::bad_alloc();
    }
    ~Bunzip2() { ::BZ2_bzDecompressEnd(&stream_); }
    Bunzip2(const Bunzip2&) = delete;
    Bunzip2& operator=(const Bunzip2&) = delete;

    void give(std::span<const char> input) noexcept {
        stream_.next_in = const_cast<char*>(input.data());  // not written to
        stream_.avail_in = static_cast<unsigned>(input.size());
    }
    Step run(std::span<char> output, std::size_t& written) noexcept {
        const unsigned before = stream_.avail_in;
        stream_.next_out = output.data();
        stream_.avail_out = static_cast<unsigned>(output.size());
        const int result = ::BZ2_bzDecompress(&stream_);
        written = output.size() - stream_.avail_out;
        switch (result) {
            case BZ_OK:
                return written == 0 && stream_.avail_in == before ? Step::kStuck : Step::kGoOn;
            case BZ_STREAM_END:
                return Step::kEnd;
            case BZ_MEM_ERROR:
                return Step::kNoMemory;
            default:
                return Step::kDamaged;
        }
    }
    [[nodiscard]] bool wantsInput() const noexcept { return stream_.avail_in == 0; }

private:
    bz_stream stream_{};
};

/// What lies behind the data is not looked at, but for what the source itself has to say at its end.
ReturnCode drain(PackedSource& source) {
    std::span<const char> piece;
    do {
        if (const ReturnCode code = source.next(piece); code != kOk) return code;
    } while (!piece.empty());
    return kOk;
}

template <class Decoder>
ReturnCode decodeWith(PackedSource& source, CheckedSink& sink) {
    constexpr std::size_t kPiece = std::size_t{256} * 1024;  // zlib copies 32 KiB aside for each, so it must be large
    Decoder decoder;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
    bool inputEnded = false;
    for (;;) {
        if (decoder.wantsInput() && !inputEnded) {
            std::span<const char> piece;
            if (const ReturnCode code = source.next(piece); code != kOk) return code;
            inputEnded = piece.empty();
            decoder.give(piece);
        }
        std::size_t written = 0;
        const Step step = decoder.run({buffer.get(), kPiece}, written);
        if (step == Step::kDamaged) return kFileCrc;
        if (step == Step::kNoMemory) return kEnoughMemory;
        if (const ReturnCode code = sink.write({buffer.get(), written}); code != kOk) return code;
        if (step == Step::kEnd) return drain(source);
        if (step == Step::kStuck && inputEnded) return kCannotRead;
    }
}

ReturnCode copyStored(PackedSource& source, CheckedSink& sink) {
    for (;;) {
        std::span<const char> piece;
        if (const ReturnCode code = source.next(piece); code != kOk) return code;
        if (piece.empty()) return kOk;
        if (const ReturnCode code = sink.write(piece); code != kOk) return code;
    }
}

ReturnCode decodeAll(std::uint16_t method, PackedSource& source, CheckedSink& sink) {
    switch (method) {
        case kStored:
            return copyStored(source, sink);
        case kDeflated:
            return decodeWith<Inflate>(source, sink);
        case kBzip2:
            return decodeWith<Bunzip2>(source, sink);
        default:
            return kMethod;
    }
}

}  // namespace

ReturnCode CheckedSink::write(std::span<const char> bytes) {
    if (bytes.empty()) return kOk;
    total_ += bytes.size();
    if (total_ > originalSize_) return kFileCrc;  // a small claim must not let a large file through
    if (hasCrc_) actualCrc_ = ::libdeflate_crc32(actualCrc_, bytes.data(), bytes.size());
    return sink_(bytes.data(), bytes.size()) ? kOk : kUserCancel;
}

ReturnCode CheckedSink::finish() const noexcept {
    if (total_ != originalSize_) return kCannotRead;
    return hasCrc_ && actualCrc_ != crc_ ? kFileCrc : kOk;
}

bool canDecode(std::uint16_t method) noexcept { return method == kStored || method == kDeflated || method == kBzip2; }

ReturnCode decode(std::uint16_t method, PackedSource& source, CheckedSink& sink) {
    const ReturnCode code = decodeAll(method, source, sink);
    return code == kOk ? sink.finish() : code;
}

}  // namespace archiver::zip
