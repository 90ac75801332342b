#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace archiver::test {

/// A main header as it is to be written.
struct ArjMain {
    std::uint8_t firstPart = 30;  ///< bytes before the name
    std::uint8_t version = 6;
    std::uint8_t host = 0;
    std::uint8_t flags = 0;
    std::uint8_t encryption = 0;
    std::uint8_t lastChapter = 0;
    std::string comment = {};
    std::string extended = {};  ///< bytes of extended headers, without the closing zero size
};

/// A file header and its data as they are to be written; what is not given is as in a plain stored member.
struct ArjFile {
    std::string name;
    std::string content = {};                ///< what the sizes and the checksum are of
    std::optional<std::string> packed = {};  ///< the content itself when not given
    std::uint8_t firstPart = 30;
    std::uint8_t version = 6;
    std::uint8_t host = 0;
    std::uint8_t flags = 0x10;
    std::uint8_t method = 0;
    std::uint8_t type = 0;
    std::uint8_t modifier = 0;
    std::uint32_t time = 0x2AB18BDD;  ///< 2001-05-17 17:30:58
    std::uint16_t mode = 0x20;
    std::uint8_t firstChapter = 0;
    std::uint8_t lastChapter = 0;
    std::uint32_t position = 0;
    std::uint32_t accessTime = 0;
    std::uint32_t creationTime = 0;
    std::uint32_t wholeSize = 0;
    std::string comment = {};
    std::string extended = {};
    std::optional<std::uint32_t> originalSize = {};  ///< what is claimed instead of the truth
    std::optional<std::uint32_t> crc = {};
};

/// Bytes of a whole archive, with or without its end mark.
std::string arjArchive(const ArjMain& main, const std::vector<ArjFile>& files, bool endMark = true);

/// A header around its basic bytes: id, size, checksum, extended headers.
std::string arjHeader(std::string_view basic, std::string_view extended = {});
std::string arjMainBasic(const ArjMain& main);
std::string arjFileBasic(const ArjFile& file);

/// One extended header with its size and checksum.
std::string arjExtended(std::string_view bytes);

inline constexpr std::string_view kArjEnd{"\x60\xEA\0\0", 4};

/// The garble of old, byte by byte.
std::string garbled(std::string_view bytes, std::string_view password, std::uint8_t modifier);

/// CRC-32, one bit at a time.
std::uint32_t crc32OneBitAtATime(std::string_view bytes);

}  // namespace archiver::test
