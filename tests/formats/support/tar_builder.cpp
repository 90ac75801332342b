#include "formats/support/tar_builder.h"

#include <cstring>

namespace archiver::test {
namespace {

void putOctal(char* at, int digits, std::uint64_t value) {
    for (int index = digits - 1; index >= 0; --index, value /= 8) at[index] = static_cast<char>('0' + value % 8);
}

/// As GNU tar stores a number that does not fit: in binary over the field's 12 bytes, the first bit set.
void putBinary(char* at, std::int64_t value) {
    for (int index = 0; index < 12; ++index) {
        const int shift = 8 * (11 - index);
        at[index] = static_cast<char>(shift >= 64 ? (value < 0 ? -1 : 0) : value >> shift & 0xFF);
    }
    at[0] = static_cast<char>(at[0] | 0x80);
}

}  // namespace

std::string tarHeader(const std::string& name, std::uint64_t size, char type, std::int64_t modified) {
    char header[512] = {};
    std::memcpy(header, name.data(), name.size() < 100 ? name.size() : 100);
    std::memcpy(header + 100, "0000644", 8);
    std::memcpy(header + 108, "0000000", 8);
    std::memcpy(header + 116, "0000000", 8);
    if (size < std::uint64_t{1} << 33) {
        putOctal(header + 124, 11, size);
    } else {
        putBinary(header + 124, static_cast<std::int64_t>(size));
    }
    if (modified >= 0) {
        putOctal(header + 136, 11, static_cast<std::uint64_t>(modified));
    } else {
        putBinary(header + 136, modified);
    }
    std::memset(header + 148, ' ', 8);
    header[156] = type;
    std::memcpy(header + 257, "ustar\00000", 8);
    unsigned sum = 0;
    for (const char byte : header) sum += static_cast<unsigned char>(byte);
    putOctal(header + 148, 6, sum);
    header[154] = '\0';
    return {header, sizeof(header)};
}

std::string tarMember(const std::string& name, const std::string& content, char type, std::int64_t modified) {
    std::string bytes = tarHeader(name, content.size(), type, modified) + content;
    bytes.resize((bytes.size() + 511) / 512 * 512, '\0');
    return bytes;
}

std::string paxRecord(const std::string& key, const std::string& value) {
    const std::string rest = " " + key + "=" + value + "\n";
    std::size_t length = rest.size() + 1;
    while (std::to_string(length).size() + rest.size() != length) ++length;
    return std::to_string(length) + rest;
}

std::string tarEnd() { return std::string(1024, '\0'); }

}  // namespace archiver::test
