#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace archiver::test {

/// One extended header.
struct LzhExtended {
    std::uint8_t type;
    std::string data;
};

/// A member as it is to be written; what is not given is as in a plain stored member.
struct LzhFile {
    std::string name;  ///< in levels 2 and 3 an extended header of type 1, left out when it is empty
    std::string content = {};
    int level = 0;
    std::string method = "-lh0-";
    std::optional<std::string> packed = {};  ///< the content itself when not given
    std::uint32_t time = 0x2AB18BDD;         ///< in MS-DOS words 2001-05-17 17:30:58
    std::uint8_t attributes = 0x20;
    char system = 'M';
    std::vector<LzhExtended> extended = {};
    bool headerCrc = false;                                           ///< an extended header with the CRC of the header
    std::string area = {};                                            ///< what follows the CRC in level 0
    bool withCrc = true;                                              ///< level 0 may end before it
    std::optional<std::uint32_t> packedSize = {}, originalSize = {};  ///< what is claimed instead of the truth
    std::optional<std::uint16_t> crc = {};
};

/// The header alone.
std::string lzhHeader(const LzhFile& file);

/// Bytes of a whole archive, with or without its end mark.
std::string lzhArchive(const std::vector<LzhFile>& files, bool endMark = true);

/// CRC-16 of the format, one bit at a time.
std::uint16_t crc16OneBitAtATime(std::string_view bytes);

/// Lowest byte first.
std::string littleEndian(std::uint64_t value, int bytes);

}  // namespace archiver::test
