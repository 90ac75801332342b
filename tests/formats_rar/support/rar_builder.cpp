#include "formats_rar/support/rar_builder.h"

namespace archiver::test {

std::uint32_t crc32OneBitAtATime(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return ~crc;
}

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string stored;
    for (int index = 0; index < bytes; ++index) stored += static_cast<char>(value >> index * 8 & 0xFF);
    return stored;
}

std::string rarNumber(std::uint64_t value) {
    std::string stored;
    while (value > 0x7F) {
        stored += static_cast<char>((value & 0x7F) | 0x80);
        value >>= 7;
    }
    return stored + static_cast<char>(value);
}

namespace {

std::string oldBlock(std::uint8_t type, std::uint16_t flags, const std::string& fields) {
    const std::string header =
        static_cast<char>(type) + littleEndian(flags, 2) + littleEndian(fields.size() + 7, 2) + fields;
    return littleEndian(crc32OneBitAtATime(header), 2) + header;
}

}  // namespace

std::string oldRarMain(std::uint16_t flags) { return oldBlock(0x73, flags, std::string(6, '\0')); }
std::string oldRarEnd(bool more) { return oldBlock(0x7B, more ? 0x4001 : 0x4000, {}); }

std::string oldRarFile(const OldRarFile& file) {
    const std::string& packed = file.packed ? *file.packed : file.content;
    return oldBlock(
               0x74, static_cast<std::uint16_t>(0x8000 | file.flags),
               littleEndian(packed.size(), 4) + littleEndian(file.originalSize.value_or(file.content.size()), 4) +
                   static_cast<char>(file.host) + littleEndian(file.crc.value_or(crc32OneBitAtATime(file.content)), 4) +
                   littleEndian(file.time, 4) + static_cast<char>(file.version) + static_cast<char>(file.method) +
                   littleEndian(file.name.size(), 2) + littleEndian(file.attributes, 4) + file.name + file.behindName) +
           packed;
}

std::string oldRar(const std::vector<OldRarFile>& files, std::uint16_t mainFlags, bool more) {
    std::string bytes = std::string(kOldRarSignature) + oldRarMain(mainFlags);
    for (const OldRarFile& file : files) bytes += oldRarFile(file);
    return bytes + oldRarEnd(more);
}

std::string newRarBlock(std::string_view fields) {
    const std::string header = rarNumber(fields.size()) + std::string(fields);
    return littleEndian(crc32OneBitAtATime(header), 4) + header;
}

std::string newRarRecord(std::uint64_t type, std::string_view data) {
    const std::string record = rarNumber(type) + std::string(data);
    return rarNumber(record.size()) + record;
}

std::string newRarMain(std::uint64_t flags, std::uint64_t number) {
    return newRarBlock(rarNumber(1) + rarNumber(0) + rarNumber(flags | (number > 0 ? 2U : 0U)) +
                       (number > 0 ? rarNumber(number) : ""));
}

std::string newRarEnd(bool more) { return newRarBlock(rarNumber(5) + rarNumber(4) + rarNumber(more ? 1 : 0)); }

std::string newRarFile(const NewRarFile& file) {
    const std::string& packed = file.packed ? *file.packed : file.content;
    std::string fields = rarNumber(2) + rarNumber(file.blockFlags | 2U | (file.extra.empty() ? 0U : 1U));
    if (!file.extra.empty()) fields += rarNumber(file.extra.size());
    fields += rarNumber(packed.size()) + rarNumber(file.flags | (file.hasCrc ? 4U : 0U) | (file.time ? 2U : 0U)) +
              rarNumber(file.originalSize.value_or(file.content.size())) + rarNumber(file.attributes);
    if (file.time) fields += littleEndian(*file.time, 4);
    if (file.hasCrc) fields += littleEndian(file.crc.value_or(crc32OneBitAtATime(file.content)), 4);
    fields += rarNumber(file.compression) + rarNumber(file.host) + rarNumber(file.name.size()) + file.name + file.extra;
    return newRarBlock(fields) + packed;
}

std::string newRar(const std::vector<NewRarFile>& files, std::uint64_t mainFlags, std::uint64_t number, bool more) {
    std::string bytes = std::string(kNewRarSignature) + newRarMain(mainFlags, number);
    for (const NewRarFile& file : files) bytes += newRarFile(file);
    return bytes + newRarEnd(more);
}

}  // namespace archiver::test
