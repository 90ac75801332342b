#include "formats_ace/support/ace_builder.h"

namespace archiver::test {

std::uint32_t aceChecksum(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return crc;
}

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8) text += static_cast<char>(value & 0xFF);
    return text;
}

std::string aceHeader(std::string_view rest) {
    return littleEndian(aceChecksum(rest) & 0xFFFF, 2) + littleEndian(rest.size(), 2) + std::string(rest);
}

std::string aceMainHeader(const AceMain& main) {
    const unsigned flags =
        main.flags | (main.advert.empty() ? 0 : 0x1000U) | (main.packedComment.empty() ? 0 : 0x0002U);
    std::string rest = littleEndian(0, 1) + littleEndian(flags, 2) + "**ACE**" + littleEndian(20, 1) +
                       littleEndian(20, 1) + littleEndian(main.host, 1) + littleEndian(main.volume, 1) +
                       littleEndian(0x2AB18BDD, 4) + std::string(8, '\0');
    if (!main.advert.empty()) rest += littleEndian(main.advert.size(), 1) + main.advert;
    if (!main.packedComment.empty()) rest += littleEndian(main.packedComment.size(), 2) + main.packedComment;
    return aceHeader(rest + main.behind);
}

std::string aceFileHeader(const AceFile& file) {
    const int sizeBytes = file.type == 3 || (file.flags & 0x0004) != 0 ? 8 : 4;
    const unsigned flags =
        file.flags | (file.packedComment.empty() ? 0 : 0x0002U) | (file.security.empty() ? 0 : 0x0400U);
    std::string rest = littleEndian(file.type, 1) + littleEndian(flags, 2) +
                       littleEndian(file.packedSize.value_or(file.packed.value_or(file.content).size()), sizeBytes) +
                       littleEndian(file.originalSize.value_or(file.content.size()), sizeBytes) +
                       littleEndian(file.stamp, 4) + littleEndian(file.attributes, 4) +
                       littleEndian(file.checksum.value_or(aceChecksum(file.content)), 4) +
                       littleEndian(file.method, 1) + littleEndian(file.quality, 1) + littleEndian(5, 2) + "TE" +
                       littleEndian(file.name.size(), 2) + file.name;
    if (!file.packedComment.empty()) rest += littleEndian(file.packedComment.size(), 2) + file.packedComment;
    if (!file.security.empty()) rest += littleEndian(file.security.size(), 2) + file.security;
    return aceHeader(rest + file.behind);
}

std::string aceMember(const AceFile& file) { return aceFileHeader(file) + file.packed.value_or(file.content); }

std::string aceArchive(const AceMain& main, const std::vector<AceFile>& files) {
    std::string bytes = aceMainHeader(main);
    for (const AceFile& file : files) bytes += aceMember(file);
    return bytes;
}

}  // namespace archiver::test
