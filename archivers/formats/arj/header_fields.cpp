#include "archivers/formats/arj/header_fields.h"

#include "archivers/formats/little_endian.h"

namespace archiver::arj {
namespace {

using little_endian::load16;
using little_endian::load32;

constexpr std::size_t kWithPosition = 34;
constexpr std::size_t kWithTimes = 46;

std::uint8_t byteAt(std::string_view basic, std::size_t offset) noexcept {
    return static_cast<unsigned char>(basic[offset]);
}

/// @return bytes before the name; 0 when the header is too short for them
std::size_t firstPartOf(std::string_view basic) noexcept {
    if (basic.size() < kSmallestFirstPart) return 0;
    const std::size_t size = byteAt(basic, 0);
    return size >= kSmallestFirstPart && size < basic.size() ? size : 0;
}

/// Takes a text off the front, up to its NUL.
/// @return whether there was a NUL
bool takeText(std::string_view& rest, std::string& text) {
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos) return false;
    text.assign(rest.substr(0, end));
    rest.remove_prefix(end + 1);
    return true;
}

}  // namespace

bool FileHeader::hasUnixTimes() const noexcept {
    // The archivers of MS-DOS never wrote these systems' numbers; the first ones that did wrote seconds and call
    // themselves 9 and up.
    constexpr std::uint8_t kFirstWithSeconds = 9;
    return (host == host::kUnix || host == host::kNext) && version >= kFirstWithSeconds;
}

bool parseMainHeader(std::string_view basic, MainHeader& header) {
    const std::size_t firstPart = firstPartOf(basic);
    if (firstPart == 0 || byteAt(basic, 6) != static_cast<std::uint8_t>(FileType::kMainHeader)) return false;
    header.version = byteAt(basic, 1);
    header.host = byteAt(basic, 3);
    header.flags = byteAt(basic, 4);
    header.encryption = byteAt(basic, 28);
    header.lastChapter = byteAt(basic, 29);
    std::string_view texts = basic.substr(firstPart);
    std::string name;
    return takeText(texts, name) && takeText(texts, header.comment);
}

bool parseFileHeader(std::string_view basic, FileHeader& header) {
    const std::size_t firstPart = firstPartOf(basic);
    if (firstPart == 0) return false;
    header.version = byteAt(basic, 1);
    header.host = byteAt(basic, 3);
    header.flags = byteAt(basic, 4);
    header.method = byteAt(basic, 5);
    header.type = static_cast<FileType>(byteAt(basic, 6));
    header.modifier = byteAt(basic, 7);
    header.time = load32(basic.data() + 8);
    header.packedSize = load32(basic.data() + 12);
    header.originalSize = load32(basic.data() + 16);
    header.crc = load32(basic.data() + 20);
    header.mode = load16(basic.data() + 26);
    header.firstChapter = byteAt(basic, 28);
    header.lastChapter = byteAt(basic, 29);
    header.position = firstPart >= kWithPosition ? load32(basic.data() + 30) : 0;
    const bool withTimes = firstPart >= kWithTimes;
    header.accessTime = withTimes ? load32(basic.data() + 34) : 0;
    header.creationTime = withTimes ? load32(basic.data() + 38) : 0;
    header.wholeSize = withTimes ? load32(basic.data() + 42) : 0;
    std::string_view texts = basic.substr(firstPart);
    return takeText(texts, header.name) && takeText(texts, header.comment);
}

}  // namespace archiver::arj
