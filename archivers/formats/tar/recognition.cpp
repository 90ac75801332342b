#include "archivers/formats/tar/recognition.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace archiver::tar {
namespace {

constexpr std::size_t kBlock = 512;

bool startsWith(const InputFile& file, std::uint64_t offset, std::string_view expected) {
    std::array<char, 8> bytes{};
    const std::span<char> part = std::span(bytes).first(expected.size());
    return file.readAll(offset, part) && std::string_view(part.data(), part.size()) == expected;
}

/// A .Z file's third byte: most code bits in bits 0-4, block mode in bit 7, the rest unused. Source: compress(1)
bool isCompressHeader(const InputFile& file) {
    std::array<char, 1> flags{};
    if (!file.readAll(2, flags)) return false;
    const int bits = flags[0] & 0x1F;
    return (flags[0] & 0x60) == 0 && bits >= 9 && bits <= 16;
}

/// Level, then the magic of a block or of the stream's end. Source: bzip2 manual and format description
enum class Bzip2Header { kGood, kCut, kNone };
Bzip2Header inspectBzip2(const InputFile& file) {
    constexpr std::uint64_t kSmallest = 14;  // of an empty file
    std::array<char, 10> start{};
    const auto got = file.readAt(0, start);
    const std::string_view bytes(start.data(), got.value_or(0));
    if (!bytes.starts_with("BZh")) return Bzip2Header::kNone;
    if (bytes.size() > 3 && (bytes[3] < '1' || bytes[3] > '9')) return Bzip2Header::kNone;
    const std::string_view magic = bytes.substr(std::min<std::size_t>(4, bytes.size()));
    const bool fits = std::string_view("1AY&SY").starts_with(magic) ||
                      std::string_view("\x17\x72\x45\x38\x50\x90").starts_with(magic);
    if (!fits) return Bzip2Header::kNone;
    return file.size() >= kSmallest ? Bzip2Header::kGood : Bzip2Header::kCut;
}

/// The checksum field against the sum of the header's bytes, counted with signs or without as writers did both.
/// Source: POSIX.1-1988 ustar; GNU tar manual, "Basic Tar Format"
bool isTarHeader(std::span<const char, kBlock> block) {
    constexpr std::size_t kField = 148;
    constexpr std::size_t kFieldSize = 8;
    std::int32_t plain = 0;
    std::int32_t withSigns = 0;
    for (std::size_t index = 0; index < kBlock; ++index) {
        const bool inField = index >= kField && index < kField + kFieldSize;
        const char byte = inField ? ' ' : block[index];
        plain += static_cast<unsigned char>(byte);
        withSigns += static_cast<signed char>(byte);
    }
    std::int32_t stored = 0;
    std::size_t index = kField;
    while (index < kField + kFieldSize && block[index] == ' ') ++index;
    const std::size_t firstDigit = index;
    for (; index < kField + kFieldSize && block[index] >= '0' && block[index] <= '7'; ++index) {
        stored = stored * 8 + (block[index] - '0');
    }
    return index > firstDigit && (stored == plain || stored == withSigns);
}

bool allZero(std::span<const char> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
}

}  // namespace

CompressionResult recogniseCompression(const InputFile& file) {
    if (startsWith(file, 0, "\x1F\x8B")) return {kOk, Compression::kGzip};
    if (startsWith(file, 0, "\x1F\x9D")) {
        return {isCompressHeader(file) ? kOk : kHeaderBroken, Compression::kCompress};
    }
    switch (inspectBzip2(file)) {
        case Bzip2Header::kGood:
            return {kOk, Compression::kBzip2};
        case Bzip2Header::kCut:
            return {kHeaderBroken, Compression::kBzip2};
        case Bzip2Header::kNone:
            break;
    }
    return {kOk, Compression::kNone};
}

Contents recogniseContents(ByteStream& stream) {
    constexpr std::uint64_t kMostZeros = std::uint64_t{1} << 20;
    std::array<char, kBlock> block{};
    std::uint64_t total = 0;
    for (;;) {
        std::span<const char> piece;
        if (stream.next(piece) != kOk) return Contents::kOther;
        if (piece.empty()) break;
        if (total < kBlock) {
            const auto held = static_cast<std::size_t>(total);
            const std::size_t taken = std::min(piece.size(), kBlock - held);
            std::copy_n(piece.begin(), taken, block.begin() + static_cast<std::ptrdiff_t>(held));
            if (held + taken == kBlock && !allZero(block)) {
                return isTarHeader(block) ? Contents::kTar : Contents::kOther;
            }
        }
        total += piece.size();
        if (total >= kBlock && (total > kMostZeros || !allZero(piece))) return Contents::kOther;
    }
    const bool endBlocksAlone = total >= 2 * kBlock && total % kBlock == 0;
    return endBlocksAlone ? Contents::kTar : Contents::kOther;
}

}  // namespace archiver::tar
