#include "formats_arj/support/arj_builder.h"

namespace archiver::test {
namespace {

std::string number(std::uint64_t value, int bytes) {
    std::string text;
    for (int index = 0; index < bytes; ++index) text += static_cast<char>(value >> (8 * index) & 0xFF);
    return text;
}

std::string byte(std::uint8_t value) { return number(value, 1); }

/// The bytes before the name, at their full length of 46, cut or filled up.
std::string firstPart(std::string fields, std::uint8_t size) {
    fields.resize(size, '\0');
    return fields;
}

}  // namespace

std::uint32_t crc32OneBitAtATime(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char each : bytes) {
        crc ^= static_cast<unsigned char>(each);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

std::string arjHeader(std::string_view basic, std::string_view extended) {
    return "\x60\xEA" + number(basic.size(), 2) + std::string(basic) + number(crc32OneBitAtATime(basic), 4) +
           std::string(extended) + number(0, 2);
}

std::string arjExtended(std::string_view bytes) {
    return number(bytes.size(), 2) + std::string(bytes) + number(crc32OneBitAtATime(bytes), 4);
}

std::string arjMainBasic(const ArjMain& main) {
    constexpr std::uint8_t kMainHeader = 2;
    const std::string fields = byte(main.firstPart) + byte(main.version) + byte(1) + byte(main.host) +
                               byte(main.flags) + byte(0) + byte(kMainHeader) + byte(0) + number(0x2AB18BDD, 4) +
                               number(0x2AB18BDD, 4) + number(0, 4) + number(0, 4) + number(0, 2) + number(0, 2) +
                               byte(main.encryption) + byte(main.lastChapter);
    return firstPart(fields, main.firstPart) + "test.arj" + byte(0) + main.comment + byte(0);
}

std::string arjFileBasic(const ArjFile& file) {
    const std::string& packed = file.packed ? *file.packed : file.content;
    const std::uint32_t size = file.originalSize.value_or(static_cast<std::uint32_t>(file.content.size()));
    const std::size_t separator = file.name.rfind('/');
    const std::string fields = byte(file.firstPart) + byte(file.version) + byte(1) + byte(file.host) +
                               byte(file.flags) + byte(file.method) + byte(file.type) + byte(file.modifier) +
                               number(file.time, 4) + number(packed.size(), 4) + number(size, 4) +
                               number(file.crc.value_or(crc32OneBitAtATime(file.content)), 4) +
                               number(separator == std::string::npos ? 0 : separator + 1, 2) + number(file.mode, 2) +
                               byte(file.firstChapter) + byte(file.lastChapter) + number(file.position, 4) +
                               number(file.accessTime, 4) + number(file.creationTime, 4) + number(file.wholeSize, 4);
    return firstPart(fields, file.firstPart) + file.name + byte(0) + file.comment + byte(0);
}

std::string arjArchive(const ArjMain& main, const std::vector<ArjFile>& files, bool endMark) {
    std::string archive = arjHeader(arjMainBasic(main), main.extended);
    for (const ArjFile& file : files) {
        archive += arjHeader(arjFileBasic(file), file.extended) + file.packed.value_or(file.content);
    }
    return endMark ? archive.append(kArjEnd) : archive;
}

std::string garbled(std::string_view bytes, std::string_view password, std::uint8_t modifier) {
    std::string result;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const int key = (modifier + static_cast<unsigned char>(password[index % password.size()])) % 256;
        result += static_cast<char>(static_cast<unsigned char>(bytes[index]) ^ key);
    }
    return result;
}

}  // namespace archiver::test
