#include "win32/drag/support/small_archives.h"

#include <cstdint>
#include <fstream>
#include <stdexcept>

#include "formats/support/tar_builder.h"
#include "win32/system/support/stored_zip.h"

namespace tovar::test {
namespace {

void put(std::string& bytes, std::uint32_t number, int size) {
    for (int byte = 0; byte < size; ++byte) bytes += static_cast<char>(number >> (8 * byte) & 0xFF);
}

std::uint16_t crc16(const std::string& bytes) {
    std::uint16_t crc = 0;
    for (const char byte : bytes) {
        crc = static_cast<std::uint16_t>(crc ^ static_cast<unsigned char>(byte));
        for (int bit = 0; bit < 8; ++bit) crc = static_cast<std::uint16_t>(crc >> 1 ^ ((crc & 1) != 0 ? 0xA001 : 0));
    }
    return crc;
}

/// A header of level 0, as LHarc wrote them; 2001-05-17 17:30:58.
std::string lzhMember(const std::string& name, const std::string& content) {
    std::string stored = name;
    for (char& letter : stored) letter = letter == '/' ? '\\' : letter;
    std::string header = "-lh0-";
    const auto size = static_cast<std::uint32_t>(content.size());
    put(header, size, 4);
    put(header, size, 4);
    put(header, 0x2AB18BDD, 4);
    put(header, 0x20, 2);  // an ordinary file; level 0
    put(header, static_cast<std::uint32_t>(stored.size()), 1);
    header += stored;
    put(header, crc16(content), 2);
    std::uint32_t sum = 0;
    for (const char byte : header) sum += static_cast<unsigned char>(byte);
    std::string member;
    put(member, static_cast<std::uint32_t>(header.size()), 1);
    put(member, sum & 0xFF, 1);
    return member + header + content;
}

}  // namespace

void writeArchive(const std::filesystem::path& file, const Members& members) {
    if (file.extension() == L".zip") {
        StoredZip zip(file);
        for (const auto& [name, content] : members) zip.add(name, content);
        zip.finish();
        return;
    }
    std::string bytes;
    for (const auto& [name, content] : members) {
        bytes += file.extension() == L".tar" ? archiver::test::tarMember(name, content) : lzhMember(name, content);
    }
    bytes += file.extension() == L".tar" ? archiver::test::tarEnd() : std::string(1, '\0');
    std::ofstream stream(file, std::ios::binary);
    if (!stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw std::runtime_error("the archive cannot be written");
    }
}

}  // namespace tovar::test
