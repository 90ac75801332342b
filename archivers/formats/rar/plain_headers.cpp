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

void append32(std::string& bytes, std::uint32_t value) {
    char stored[4];
    little_endian::store32(stored, value);
    bytes.append(stored, sizeof(stored));
}

void appendNumber(std::string& bytes, std::uint64_t value) {
    for (; value >= 0x80; value >>= 7) bytes += static_cast<char>(0x80 | (value & 0x7F));
    bytes += static_cast<char>(value);
}

/// A header around everything behind its size.
std::string headerOf(std::string_view fields) {
    std::string header;
    appendNumber(header, fields.size());
    header += fields;
    std::string checksum;
    append32(checksum, sumOf(header));
    return checksum + header;
}

}  // namespace

std::string plainStart(bool solid) {
    const std::string fields = {1, 0, static_cast<char>(solid ? 4 : 0)};
    return std::string("Rar!\x1A\x07\x01\0", 8) + headerOf(fields);
}

std::string plainFile(const FileHeader& file, bool solid) {
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
    return headerOf(fields + extra);
}

std::string plainEnd() { return headerOf({"\5\0\0", 3}); }

}  // namespace archiver::rar
