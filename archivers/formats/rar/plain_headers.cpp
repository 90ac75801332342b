#include "archivers/formats/rar/plain_headers.h"

#include <zlib.h>

#include <string_view>

#include "archivers/formats/little_endian.h"

namespace archiver::rar {
namespace {

constexpr char kName = 'm';

std::uint32_t sumOf(std::string_view bytes) {
    return static_cast<std::uint32_t>(
        ::crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

void append16(std::string& bytes, std::uint16_t value) {
    char stored[2];
    little_endian::store16(stored, value);
    bytes.append(stored, sizeof(stored));
}

void append32(std::string& bytes, std::uint32_t value) {
    char stored[4];
    little_endian::store32(stored, value);
    bytes.append(stored, sizeof(stored));
}

void appendNumber(std::string& bytes, std::uint64_t value) {
    for (; value >= 0x80; value >>= 7) bytes += static_cast<char>(0x80 | (value & 0x7F));
    bytes += static_cast<char>(value);
}

/// A header of the old layout around the fields behind its size.
std::string oldHeader(std::uint8_t type, std::uint16_t flags, std::string_view fields) {
    std::string header(1, static_cast<char>(type));
    append16(header, flags);
    append16(header, static_cast<std::uint16_t>(7 + fields.size()));
    header += fields;
    std::string checksum;
    append16(checksum, static_cast<std::uint16_t>(sumOf(header) & 0xFFFF));
    return checksum + header;
}

/// A header of the new layout around everything behind its size.
std::string newHeader(std::string_view fields) {
    std::string header;
    appendNumber(header, fields.size());
    header += fields;
    std::string checksum;
    append32(checksum, sumOf(header));
    return checksum + header;
}

/// Packed bytes that unpack to nothing, to be put before those of a file.
///
/// libarchive (3.6.2 at least) unpacks as many bytes as its window has, and up to one match more, before it gives the
/// first of them out: the match overwrites them. The window is 4 MiB, so that packed files above that come out wrong at
/// each 4 MiB. How many bytes it unpacks at a time is what a PPMd block says its memory is, if it is not more than the
/// window. So two such blocks stand here: at the first one the window is made, the second one says 3 MiB. Each is a
/// header (PPMd, with a size of memory, order 2; 3 MiB), and the range coder's bytes for "escape" and "new tables".
/// Where libarchive does better, they do no harm.
std::string_view noBytes(const FileHeader& file) {
    static constexpr char kTwoBlocks[] =
        "\xA1\x02\x01\xFE\x59\x09\0\0"
        "\xA1\x02\x01\xFE\x59\x09\0\0";
    constexpr std::uint64_t kWindow = std::uint64_t{4} << 20;
    const bool needed = file.method != 0 && file.originalSize >= kWindow;
    return {kTwoBlocks, needed ? sizeof(kTwoBlocks) - 1 : 0};
}

std::string oldFile(const FileHeader& file) {
    constexpr std::uint16_t kHasData = 0x8000;
    constexpr std::uint16_t kLarge = 0x0100;
    constexpr std::uint8_t kUnix = 3;
    constexpr std::uint32_t kRegularFile = 0100644;
    const std::string_view before = noBytes(file);
    const std::uint64_t packedSize = file.packedSize + before.size();
    std::string fields;
    append32(fields, static_cast<std::uint32_t>(packedSize & 0xFFFFFFFF));
    append32(fields, static_cast<std::uint32_t>(file.originalSize & 0xFFFFFFFF));
    fields += static_cast<char>(kUnix);
    append32(fields, file.crc);
    append32(fields, 0);  // time
    fields += static_cast<char>(file.version);
    fields += static_cast<char>(0x30 + file.method);
    append16(fields, 1);
    append32(fields, kRegularFile);
    append32(fields, static_cast<std::uint32_t>(packedSize >> 32));
    append32(fields, static_cast<std::uint32_t>(file.originalSize >> 32));
    fields += kName;
    return oldHeader(0x74, static_cast<std::uint16_t>(kHasData | kLarge | file.dictionary << 5), fields).append(before);
}

std::string newFile(const FileHeader& file, bool solid) {
    constexpr std::uint64_t kFile = 2;
    constexpr std::uint64_t kHasExtra = 1;
    constexpr std::uint64_t kHasData = 2;
    constexpr std::uint64_t kHasCrc = 4;
    constexpr std::uint64_t kUnix = 1;
    constexpr std::uint64_t kRegularFile = 0100644;
    std::string extra;
    if (!file.blake2.empty()) {
        appendNumber(extra, file.blake2.size() + 2);
        appendNumber(extra, 2);  // a checksum
        appendNumber(extra, 0);  // of BLAKE2sp
        extra += file.blake2;
    }
    std::string fields;
    appendNumber(fields, kFile);
    appendNumber(fields, kHasData | (extra.empty() ? 0 : kHasExtra));
    if (!extra.empty()) appendNumber(fields, extra.size());
    appendNumber(fields, file.packedSize);
    appendNumber(fields, file.hasCrc ? kHasCrc : 0);
    appendNumber(fields, file.originalSize);
    appendNumber(fields, kRegularFile);
    if (file.hasCrc) append32(fields, file.crc);
    appendNumber(fields, std::uint64_t{file.version} | (solid ? 0x40U : 0U) | std::uint64_t{file.method} << 7 |
                             std::uint64_t{file.dictionary} << 10);
    appendNumber(fields, kUnix);
    appendNumber(fields, 1);
    fields += kName;
    return newHeader(fields + extra);
}

}  // namespace

std::string plainStart(Generation generation, bool solid) {
    if (generation == Generation::kOld)
        return std::string("Rar!\x1A\x07\0", 7) + oldHeader(0x73, 0, {"\0\0\0\0\0\0", 6});
    const std::string fields = {1, 0, static_cast<char>(solid ? 4 : 0)};
    return std::string("Rar!\x1A\x07\x01\0", 8) + newHeader(fields);
}

std::string plainFile(Generation generation, const PackedFile& file, bool solid) {
    return generation == Generation::kOld ? oldFile(file.header) : newFile(file.header, solid);
}

std::string plainEnd(Generation generation) {
    return generation == Generation::kOld ? oldHeader(0x7B, 0x4000, {}) : newHeader({"\5\0\0", 3});
}

}  // namespace archiver::rar
