#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

std::string byte(int value) { return littleEndian(static_cast<std::uint64_t>(value), 1); }

std::vector<LzhExtended> extendedOf(const LzhFile& file) {
    std::vector<LzhExtended> all;
    if (file.headerCrc) all.push_back({0x00, std::string(2, '\0')});
    if (file.level >= 2 && !file.name.empty()) all.push_back({0x01, file.name});
    all.insert(all.end(), file.extended.begin(), file.extended.end());
    return all;
}

/// The chain from the size of its first header to the zero at its end.
std::string chain(const std::vector<LzhExtended>& all, int width) {
    std::string bytes;
    for (const LzhExtended& each : all) {
        const std::size_t size = 1 + each.data.size() + static_cast<std::size_t>(width);
        bytes += littleEndian(size, width) + byte(each.type) + each.data;
    }
    return bytes + littleEndian(0, width);
}

/// Method to level, which all levels have in common.
std::string commonFields(const LzhFile& file, std::size_t extendedSize) {
    const std::string& packed = file.packed ? *file.packed : file.content;
    return file.method + littleEndian(file.packedSize.value_or(packed.size()) + extendedSize, 4) +
           littleEndian(file.originalSize.value_or(file.content.size()), 4) + littleEndian(file.time, 4) +
           byte(file.attributes) + byte(file.level);
}

std::uint16_t crcOf(const LzhFile& file) { return file.crc.value_or(crc16OneBitAtATime(file.content)); }

std::string oldHeader(const LzhFile& file) {
    const std::string extended = file.level == 1 ? chain(extendedOf(file), 2) : std::string();
    // The size of the first extended header belongs to the basic header.
    const std::size_t counted = extended.empty() ? 0 : extended.size() - 2;
    std::string basic = commonFields(file, counted) + byte(static_cast<int>(file.name.size())) + file.name;
    if (file.withCrc) basic += littleEndian(crcOf(file), 2);
    basic += file.level == 1 ? byte(file.system) + extended.substr(0, 2) : file.area;
    unsigned sum = 0;
    for (const char each : basic) sum += static_cast<unsigned char>(each);
    const std::string rest = extended.empty() ? std::string() : extended.substr(2);
    return byte(static_cast<int>(basic.size())) + byte(static_cast<int>(sum & 0xFF)) + basic + rest;
}

std::string newHeader(const LzhFile& file) {
    const int width = file.level == 2 ? 2 : 4;
    const std::string extended = chain(extendedOf(file), width);
    const std::string fields = commonFields(file, 0) + littleEndian(crcOf(file), 2) + byte(file.system);
    if (file.level == 3) {
        const std::size_t size = 2 + fields.size() + 4 + extended.size();
        return littleEndian(4, 2) + fields + littleEndian(size, 4) + extended;
    }
    std::size_t size = 2 + fields.size() + extended.size();
    // A header may not begin with a zero.
    const bool pad = size % 256 == 0;
    if (pad) ++size;
    return littleEndian(size, 2) + fields + extended + std::string(pad ? 1 : 0, '\0');
}

}  // namespace

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (int index = 0; index < bytes; ++index) text += static_cast<char>(value >> (8 * index) & 0xFF);
    return text;
}

std::uint16_t crc16OneBitAtATime(std::string_view bytes) {
    unsigned crc = 0;
    for (const char each : bytes) {
        crc ^= static_cast<unsigned char>(each);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xA001U : 0U);
    }
    return static_cast<std::uint16_t>(crc);
}

std::string lzhHeader(const LzhFile& file) {
    std::string header = file.level < 2 ? oldHeader(file) : newHeader(file);
    if (!file.headerCrc) return header;
    // It is the first of the extended headers: behind the sizes and its type.
    const std::size_t at = file.level == 1 ? 27 + file.name.size() + 1 : file.level == 2 ? 27 : 33;
    const std::string crc = littleEndian(crc16OneBitAtATime(header), 2);
    return header.replace(at, 2, crc);
}

std::string lzhArchive(const std::vector<LzhFile>& files, bool endMark) {
    std::string archive;
    for (const LzhFile& file : files) archive += lzhHeader(file) + file.packed.value_or(file.content);
    return endMark ? archive + '\0' : archive;
}

}  // namespace archiver::test
