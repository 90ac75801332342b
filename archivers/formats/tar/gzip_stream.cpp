#include "archivers/formats/tar/gzip_stream.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "archivers/formats/little_endian.h"

namespace archiver::tar {
namespace {

constexpr int kGzipWindow = 16 + MAX_WBITS;  ///< zlib: gzip headers and checksums, any window
constexpr unsigned char kMagic[] = {0x1F, 0x8B};

}  // namespace

bool readGzipHeader(const InputFile& file, GzipHeader& header) {
    constexpr std::size_t kFixed = 10;
    constexpr std::size_t kLargestName = std::size_t{64} * 1024;
    enum Flags : unsigned char { kExtra = 4, kName = 8, kReserved = 0xE0 };

    std::array<char, kFixed> fixed{};
    if (!file.readAll(0, fixed)) return false;
    const auto flags = static_cast<unsigned char>(fixed[3]);
    if (fixed[2] != Z_DEFLATED || (flags & kReserved) != 0) return false;
    header = {{}, little_endian::load32(fixed.data() + 4), static_cast<std::uint8_t>(fixed[9])};

    std::uint64_t position = kFixed;
    if ((flags & kExtra) != 0) {
        std::array<char, 2> size{};
        if (!file.readAll(position, size)) return false;
        position += size.size() + little_endian::load16(size.data());
    }
    if ((flags & kName) != 0) {
        std::vector<char> name(kLargestName);
        const auto got = file.readAt(position, name);
        if (!got) return false;
        const auto end = name.begin() + static_cast<std::ptrdiff_t>(*got);
        const auto nul = std::find(name.begin(), end, '\0');
        if (nul == end) return false;
        header.name.assign(name.begin(), nul);
    }
    return position <= file.size();
}

GzipStream::GzipStream(const InputFile& file)
    : file_(file), input_(file), buffer_(std::make_unique_for_overwrite<char[]>(kPiece)) {
    if (::inflateInit2(&inflate_, kGzipWindow) != Z_OK) throw std::bad_alloc();
}

GzipStream::~GzipStream() { ::inflateEnd(&inflate_); }

ReturnCode GzipStream::next(std::span<const char>& piece) noexcept {
    piece = {};
    if (error_ == kOk && !ended_) {
        inflate_.next_out = reinterpret_cast<Bytef*>(buffer_.get());
        inflate_.avail_out = kPiece;
        fill();
        piece = {buffer_.get(), kPiece - inflate_.avail_out};
        if (!piece.empty()) return kOk;  // what was good before an error counts; the error comes next
    }
    return error_;
}

void GzipStream::fill() noexcept {
    while (inflate_.avail_out > 0 && error_ == kOk && !ended_) {
        refill();
        if (error_ != kOk) return;
        const Bytef* const start = inflate_.next_out;
        const int result = ::inflate(&inflate_, Z_NO_FLUSH);
        if (const auto written = static_cast<std::size_t>(inflate_.next_out - start); written > 0) {
            if (size_ == 0) ::inflateValidate(&inflate_, 0);  // zlib has looked at the header's own checksum by now
            crc_ = ::libdeflate_crc32(crc_, start, written);
            size_ += static_cast<std::uint32_t>(written);
        }
        switch (result) {
            case Z_OK:
                break;
            case Z_STREAM_END:
                error_ = checkMember();
                if (error_ == kOk) afterMember();
                break;
            case Z_BUF_ERROR:
                if (inputEnded_ && inflate_.avail_in == 0) error_ = kCannotRead;
                break;
            case Z_MEM_ERROR:
                error_ = kEnoughMemory;
                break;
            default:
                error_ = kFileCrc;
                break;
        }
    }
}

void GzipStream::refill() noexcept {
    if (inflate_.avail_in > 0 || inputEnded_) return;
    std::span<const char> piece;
    error_ = input_.next(piece);
    inputEnded_ = piece.empty();
    inflate_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));  // zlib does not write there
    inflate_.avail_in = static_cast<uInt>(piece.size());
}

/// Goes on with the next compressed member, if one follows.
void GzipStream::afterMember() noexcept {
    // The start of the next one can be split between two pieces. One byte of it is as good as two: foreign bytes that
    // begin with it are no usual thing, and a cut header is an error worth telling.
    refill();
    if (error_ != kOk) return;
    if (inflate_.avail_in == 0 || inflate_.next_in[0] != kMagic[0] ||
        (inflate_.avail_in > 1 && inflate_.next_in[1] != kMagic[1])) {
        ended_ = true;
        return;
    }
    startMember();
}

void GzipStream::startMember() noexcept {
    if (::inflateReset(&inflate_) != Z_OK || ::inflateValidate(&inflate_, 1) != Z_OK) error_ = kFileCrc;
    crc_ = size_ = 0;
}

/// The checksum and the size are the last of what zlib took.
ReturnCode GzipStream::checkMember() const noexcept {
    std::array<char, 8> trailer{};
    if (!file_.readAll(input_.consumed() - inflate_.avail_in - trailer.size(), trailer)) return kCannotRead;
    const bool good =
        little_endian::load32(trailer.data()) == crc_ && little_endian::load32(trailer.data() + 4) == size_;
    return good ? kOk : kFileCrc;
}

}  // namespace archiver::tar
