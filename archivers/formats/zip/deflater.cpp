#include "archivers/formats/zip/deflater.h"

#include <libdeflate.h>
#include <zlib.h>

#include <array>
#include <new>

namespace archiver::zip {
namespace {

/// What goes behind a part that another one follows: three bits, up to a byte, and the four bytes of an empty block.
constexpr std::size_t kMostBehind = 5;

/// Where things stand in packed bytes, in bits.
struct BitPlaces {
    std::uint64_t lastHeader = 0;  ///< of the last block
    std::uint64_t end = 0;
    bool found = false;
};

/// Only unpacking tells where blocks begin.
BitPlaces placesIn(std::span<const char> packed) {
    z_stream stream{};
    if (::inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
    std::array<Bytef, 1 << 16> window;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    BitPlaces places;
    int answer = Z_OK;
    while (answer == Z_OK) {
        stream.next_out = window.data();
        stream.avail_out = static_cast<uInt>(window.size());
        answer = ::inflate(&stream, Z_BLOCK);
        const std::uint64_t bit =
            std::uint64_t{packed.size() - stream.avail_in} * 8 - static_cast<unsigned>(stream.data_type & 7);
        // Between two blocks; behind the last one, as only there the rest of the byte is not yet given up.
        constexpr int kBetween = 128, kBehindLast = 64;
        if (answer != Z_OK || (stream.data_type & kBetween) == 0) continue;
        places.found = (stream.data_type & kBehindLast) != 0;
        (places.found ? places.end : places.lastHeader) = bit;
        if (places.found) break;
    }
    ::inflateEnd(&stream);
    return places;
}

}  // namespace

std::uint32_t crcOf(std::uint32_t crc, std::span<const char> bytes) noexcept {
    return ::libdeflate_crc32(crc, bytes.data(), bytes.size());
}

std::uint32_t combinedCrc(std::uint32_t first, std::uint32_t second, std::uint64_t size) noexcept {
    // The type of a length may have 32 bits: in steps then.
    constexpr std::uint64_t kStep = std::uint64_t{1} << 30;
    for (; size > kStep; size -= kStep) first = static_cast<std::uint32_t>(::crc32_combine(first, 0, z_off_t{kStep}));
    return static_cast<std::uint32_t>(::crc32_combine(first, second, static_cast<z_off_t>(size)));
}

void Deflater::Free::operator()(libdeflate_compressor* compressor) const noexcept {
    ::libdeflate_free_compressor(compressor);
}

Deflater::Deflater(int level) : level_(level), compressor_(::libdeflate_alloc_compressor(level)) {
    if (!compressor_) throw std::bad_alloc();
}

Deflater::~Deflater() = default;

std::span<const char> Deflater::pack(std::span<const char> plain, bool last) {
    const std::size_t bound = ::libdeflate_deflate_compress_bound(compressor_.get(), plain.size()) + kMostBehind;
    if (bound > capacity_) {
        packed_.reset();
        capacity_ = 0;
        packed_ = std::make_unique_for_overwrite<char[]>(bound);
        capacity_ = bound;
    }
    std::size_t size =
        ::libdeflate_deflate_compress(compressor_.get(), plain.data(), plain.size(), packed_.get(), capacity_);
    if (size == 0) throw std::bad_alloc();  // there is room for anything
    if (last) return {packed_.get(), size};

    const BitPlaces places = placesIn({packed_.get(), size});
    if (!places.found) throw std::bad_alloc();
    char& header = packed_[static_cast<std::size_t>(places.lastHeader / 8)];
    header = static_cast<char>(header & ~(1 << (places.lastHeader % 8)));
    // The three bits of the stored block's header are zero, as the bits behind the end are.
    const auto used = static_cast<unsigned>(places.end % 8);
    size = static_cast<std::size_t>((places.end + 7) / 8);
    if (used == 0 || used > 5) packed_[size++] = 0;
    for (const int each : {0x00, 0x00, 0xFF, 0xFF}) packed_[size++] = static_cast<char>(each);
    return {packed_.get(), size};
}

}  // namespace archiver::zip
