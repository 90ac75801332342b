#include "archivers/formats/cab/block_packer.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

#include "archivers/formats/little_endian.h"

namespace archiver::cab {

namespace {

constexpr int kLevel = Z_DEFAULT_COMPRESSION;
constexpr int kMemory = 8;  // of a block's symbols two sets of codes, which packs a little tighter than one
// Lists of numbers match nearly everywhere, but never far: which matches are taken counts for more than what the block
// before holds. Looked for exactly they shrink to the half and in less time than it takes with the block before; other
// content would take three times as long for 1 per cent.
constexpr int kExactLevel = 10;
constexpr int kFewKinds = 32;
constexpr std::size_t kMarkSize = 2;    // "CK"
constexpr std::size_t kStoredHead = 5;  // of a stream block that does not compress

void storeHead(std::vector<char>& block, std::size_t contentSize) {
    const std::size_t packed = block.size() - kBlockHeadSize;
    little_endian::store16(block.data() + 4, static_cast<std::uint16_t>(packed));
    little_endian::store16(block.data() + 6, static_cast<std::uint16_t>(contentSize));
    const std::span<const char> bytes(block);
    const std::uint32_t sum = blockChecksum(bytes.subspan(kBlockHeadSize), 0);
    little_endian::store32(block.data(), blockChecksum(bytes.subspan(4, 4), sum));
}

bool hasFewKinds(std::span<const char> content) noexcept {
    std::array<bool, 256> seen{};
    for (const char byte : content) seen[static_cast<unsigned char>(byte)] = true;
    return std::ranges::count(seen, true) <= kFewKinds;
}

}  // namespace

std::uint32_t blockChecksum(std::span<const char> bytes, std::uint32_t seed) noexcept {
    std::uint32_t sum = seed;
    std::size_t at = 0;
    for (; bytes.size() - at >= 4; at += 4) sum ^= little_endian::load32(bytes.data() + at);
    std::uint32_t rest = 0;
    for (; at < bytes.size(); ++at) rest = rest << 8 | static_cast<unsigned char>(bytes[at]);
    return sum ^ rest;
}

struct BlockPacker::Deflater {
    Deflater() {
        if (::deflateInit2(&stream, kLevel, Z_DEFLATED, -MAX_WBITS, kMemory, Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Deflater() { ::deflateEnd(&stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    /// @return bytes written; 0 when they are not fewer than there is room for
    std::size_t run(std::span<const char> content, std::span<const char> before, std::span<char> room) noexcept {
        ::deflateReset(&stream);
        if (!before.empty()) {
            ::deflateSetDictionary(&stream, reinterpret_cast<const Bytef*>(before.data()),
                                   static_cast<uInt>(before.size()));
        }
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
        stream.avail_in = static_cast<uInt>(content.size());
        stream.next_out = reinterpret_cast<Bytef*>(room.data());
        stream.avail_out = static_cast<uInt>(room.size());
        if (::deflate(&stream, Z_FINISH) != Z_STREAM_END) return 0;
        return room.size() - stream.avail_out;
    }

    z_stream stream{};
};

struct BlockPacker::ExactDeflater {
    ExactDeflater() : compressor(::libdeflate_alloc_compressor(kExactLevel)) {
        if (compressor == nullptr) throw std::bad_alloc();
    }
    ~ExactDeflater() { ::libdeflate_free_compressor(compressor); }
    ExactDeflater(const ExactDeflater&) = delete;
    ExactDeflater& operator=(const ExactDeflater&) = delete;

    /// As above, with nothing before the content.
    std::size_t run(std::span<const char> content, std::span<char> room) noexcept {
        return ::libdeflate_deflate_compress(compressor, content.data(), content.size(), room.data(), room.size());
    }

    libdeflate_compressor* compressor;
};

BlockPacker::BlockPacker() = default;
BlockPacker::~BlockPacker() = default;

void BlockPacker::pack(CabinetMethod method, std::span<const char> content, std::span<const char> before,
                       std::vector<char>& block) {
    if (method == CabinetMethod::kStored) {
        block.resize(kBlockHeadSize + content.size());
        std::copy(content.begin(), content.end(), block.begin() + kBlockHeadSize);
        storeHead(block, content.size());
        return;
    }
    if (!deflater_) deflater_ = std::make_unique<Deflater>();
    constexpr std::size_t kFront = kBlockHeadSize + kMarkSize;
    block.resize(kFront + kStoredHead + content.size());
    block[kBlockHeadSize] = 'C';
    block[kBlockHeadSize + 1] = 'K';
    // One byte less than it takes to store the content: what does not gain is stored.
    const std::span<char> room = std::span(block).subspan(kFront, kStoredHead + content.size() - 1);
    std::size_t packed = deflater_->run(content, before, room);
    if (packed != 0 && hasFewKinds(content)) {
        if (!exact_) exact_ = std::make_unique<ExactDeflater>();
        exactBytes_.resize(packed - 1);
        if (const std::size_t less = exact_->run(content, exactBytes_); less != 0) {
            packed = less;
            std::copy_n(exactBytes_.begin(), packed, room.begin());
        }
    }
    if (packed != 0) {
        block.resize(kFront + packed);
    } else {
        char* const stored = block.data() + kFront;
        stored[0] = 1;  // the last stream block, stored
        little_endian::store16(stored + 1, static_cast<std::uint16_t>(content.size()));
        little_endian::store16(stored + 3, static_cast<std::uint16_t>(~content.size()));
        std::memcpy(stored + kStoredHead, content.data(), content.size());
    }
    storeHead(block, content.size());
}

}  // namespace archiver::cab
