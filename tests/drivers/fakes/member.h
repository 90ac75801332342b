#pragma once
#include <algorithm>
#include <cstdint>
#include <string>

#include "archivers/convention/abi.h"

namespace tovar::test {

/// What a library tells of a member; a text as long as its field or longer fills it without a NUL.
struct LibraryMember {
    std::string name;
    std::uint32_t original = 0;
    std::uint32_t packed = 0;
    std::uint32_t crc = 0;
    std::uint16_t ratio = 0;
    std::uint16_t date = 0;
    std::uint16_t time = 0;
    std::string attribute = "a--w";
    std::string mode = "Deflate";
};

template <std::size_t Size>
void fillField(char (&field)[Size], const std::string& text) {
    std::copy_n(text.begin(), std::min(text.size(), Size), field);
}

inline archiver::IndividualInfo infoOf(const LibraryMember& member) {
    archiver::IndividualInfo info{};
    info.originalSize = member.original;
    info.compressedSize = member.packed;
    info.crc = member.crc;
    info.ratio = member.ratio;
    info.date = member.date;
    info.time = member.time;
    fillField(info.fileName, member.name);
    fillField(info.attribute, member.attribute);
    fillField(info.mode, member.mode);
    return info;
}

/// @param twoSeconds  seconds / 2
constexpr std::uint16_t dosTime(unsigned hour, unsigned minute, unsigned twoSeconds) {
    return static_cast<std::uint16_t>(hour << 11 | minute << 5 | twoSeconds);
}

constexpr std::uint16_t dosDate(unsigned year, unsigned month, unsigned day) {
    return static_cast<std::uint16_t>((year - 1980) << 9 | month << 5 | day);
}

}  // namespace tovar::test
