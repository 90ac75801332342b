#include "archivers/formats/lzh/extended_headers.h"

#include <optional>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/lzh/crc16.h"

namespace archiver::lzh {
namespace {

using little_endian::load16;
using little_endian::load32;
using little_endian::load64;

namespace type {
constexpr std::uint8_t kCommon = 0x00;
constexpr std::uint8_t kName = 0x01;
constexpr std::uint8_t kFolder = 0x02;
constexpr std::uint8_t kAttributes = 0x40;
constexpr std::uint8_t kFileTimes = 0x41;
constexpr std::uint8_t kSizes = 0x42;
constexpr std::uint8_t kWideName = 0x44;
constexpr std::uint8_t kWideFolder = 0x45;
constexpr std::uint8_t kCodePage = 0x46;
constexpr std::uint8_t kUnixMode = 0x50;
constexpr std::uint8_t kUnixTime = 0x54;
}  // namespace type

std::u16string wideText(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (; bytes.size() >= 2; bytes.remove_prefix(2)) text += static_cast<char16_t>(load16(bytes.data()));
    return text;
}

/// Those that are shorter than they have to be are passed over like unknown ones.
void readExtended(std::uint8_t kind, std::string_view data, Header& header) {
    switch (kind) {
        case type::kName:
            header.name.assign(data);
            break;
        case type::kFolder:
            header.folder.assign(data);
            break;
        case type::kAttributes:
            if (data.size() >= 2) header.attributes = static_cast<std::uint8_t>(load16(data.data()) & 0xFF);
            break;
        case type::kFileTimes:
            if (data.size() < 24) break;
            header.createdAt = load64(data.data());
            header.writtenAt = load64(data.data() + 8);
            header.accessedAt = load64(data.data() + 16);
            break;
        case type::kSizes:
            if (data.size() < 16) break;
            header.packedSize = load64(data.data());
            header.originalSize = load64(data.data() + 8);
            break;
        case type::kWideName:
            header.wideName = wideText(data);
            break;
        case type::kWideFolder:
            header.wideFolder = wideText(data);
            break;
        case type::kCodePage:
            if (data.size() >= 4) header.codePage = load32(data.data());
            break;
        case type::kUnixMode:
            if (data.size() >= 2) header.unixMode = load16(data.data());
            break;
        case type::kUnixTime:
            if (data.size() >= 4) header.unixTime = load32(data.data());
            break;
        default:
            break;
    }
}

}  // namespace

ReturnCode readExtendedHeaders(std::string& bytes, std::size_t at, std::size_t width, Header& header) {
    std::optional<std::uint16_t> crc;
    for (;;) {
        if (at > bytes.size() || bytes.size() - at < width) return kHeaderBroken;
        const std::size_t size = width == 2 ? load16(bytes.data() + at) : load32(bytes.data() + at);
        if (size == 0) break;
        at += width;
        // The size counts the type before the data and the next size behind it.
        if (size < 1 + width || bytes.size() - at < size) return kHeaderBroken;
        const auto kind = static_cast<std::uint8_t>(bytes[at]);
        const std::string_view data = std::string_view(bytes).substr(at + 1, size - 1 - width);
        if (kind == type::kCommon && data.size() >= 2) {
            crc = load16(data.data());
            bytes[at + 1] = bytes[at + 2] = '\0';
        } else {
            readExtended(kind, data, header);
        }
        at += size - width;
    }
    return !crc || crc == crc16Of(bytes) ? kOk : kHeaderCrc;
}

}  // namespace archiver::lzh
