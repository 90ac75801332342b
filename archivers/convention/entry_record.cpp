#include "archivers/convention/entry_record.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace archiver {

namespace {

/// Fills a whole field: the text, cut to leave a NUL, and zeros behind it.
template <std::size_t kSize>
void fillText(std::string_view text, char (&field)[kSize]) noexcept {
    const std::size_t length = text.copy(field, kSize - 1);
    std::memset(field + length, 0, kSize - length);
}

}  // namespace

void fillAttributes(std::uint8_t bits, AttributeStyle style, char (&field)[8]) noexcept {
    const auto letter = [bits](std::uint8_t bit, char name) { return (bits & bit) != 0 ? name : '-'; };
    const char archive = style == AttributeStyle::kFolderFirst ? letter(attribute::kArchive, 'a') : '-';
    const char text[4] = {
        style == AttributeStyle::kLetters ? letter(attribute::kArchive, 'A')
                                          : ((bits & attribute::kFolder) != 0 ? 'd' : archive),
        style == AttributeStyle::kLetters ? letter(attribute::kSystem, 'S') : letter(attribute::kSystem, 's'),
        style == AttributeStyle::kLetters ? letter(attribute::kHidden, 'H') : letter(attribute::kHidden, 'h'),
        style == AttributeStyle::kLetters ? letter(attribute::kReadOnly, 'R')
                                          : ((bits & attribute::kReadOnly) != 0 ? '-' : 'w'),
    };
    fillText({text, sizeof text}, field);
}

std::uint16_t ratioOf(std::uint64_t packed, std::uint64_t original) noexcept {
    constexpr std::uint64_t highest = 0x7FFF;
    constexpr std::uint64_t narrow = 0xFFFFFFFF / 1000;
    if (original == 0) {
        return 0;
    }
    if (packed <= narrow && original <= narrow) {  // most members: no 64-bit division, which is slow on 32-bit machines
        const std::uint32_t ratio = static_cast<std::uint32_t>(packed) * 1000 / static_cast<std::uint32_t>(original);
        return static_cast<std::uint16_t>(std::min<std::uint64_t>(ratio, highest));
    }
    while (packed > UINT64_MAX / 1000) {  // claims of exabytes: the lowest bits do not show
        packed >>= 1;
        original >>= 1;
    }
    return static_cast<std::uint16_t>(original == 0 ? highest : std::min(packed * 1000 / original, highest));
}

TextCodec::Written writeName(const Member& member, char separator, const TextCodec& codec, char* buffer,
                             std::size_t size) noexcept {
    const TextCodec::Written written = codec.encode(member.name, buffer, size);
    if (separator == '\\') {
        // "/" is no second byte of a character in any ANSI code page.
        std::replace(buffer, buffer + written.length, '/', '\\');
    }
    return written;
}

void fillRecord(const Member& member, const LibraryDescription& library, const TextCodec& codec,
                IndividualInfo& info) noexcept {
    info.originalSize = clampToDword(member.originalSize);
    info.compressedSize = clampToDword(member.packedSize);
    info.crc = member.crc;
    info.flag = 0;
    info.osType = member.osType;
    info.ratio = ratioOf(member.packedSize, member.originalSize);
    info.date = member.dosDate;
    info.time = member.dosTime;
    const std::size_t length = writeName(member, library.separator, codec, info.fileName, sizeof info.fileName).length;
    std::memset(info.fileName + length, 0, sizeof info.fileName - length);
    std::memset(info.padding, 0, sizeof info.padding);
    fillAttributes(member.attributes, library.attributeStyle, info.attribute);
    fillText(member.method, info.mode);
}

}  // namespace archiver
