#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace archiver::test {

/// A main header as it is to be written.
struct AceMain {
    std::uint16_t flags = 0x0100;  ///< those of advert and comment are added
    std::uint8_t host = 2;
    std::uint8_t volume = 0;
    std::string advert = {};
    std::string packedComment = {};
    std::string behind = {};  ///< bytes behind the known fields
};

/// A file header and its data as they are to be written; what is not given is as in a plain stored member.
struct AceFile {
    std::string name;
    std::string content = {};                ///< what the size and the checksum are of
    std::optional<std::string> packed = {};  ///< the content itself when not given
    std::uint8_t type = 1;
    std::uint16_t flags = 0x0001;
    std::uint32_t stamp = 0x2AB18BDD;  ///< 2001-05-17 17:30:58
    std::uint32_t attributes = 0x20;
    std::uint8_t method = 0;
    std::uint8_t quality = 3;
    std::string packedComment = {};
    std::string security = {};
    std::string behind = {};                                          ///< bytes behind the known fields
    std::optional<std::uint64_t> originalSize = {}, packedSize = {};  ///< what is claimed instead of the truth
    std::optional<std::uint32_t> checksum = {};
};

/// A header around what follows its size: checksum and size in front.
std::string aceHeader(std::string_view rest);
std::string aceMainHeader(const AceMain& main);
std::string aceFileHeader(const AceFile& file);
/// Header and data.
std::string aceMember(const AceFile& file);

/// Bytes of a whole archive.
std::string aceArchive(const AceMain& main, const std::vector<AceFile>& files);

/// The checksum of the format, one bit at a time: CRC-32 without the final inversion.
std::uint32_t aceChecksum(std::string_view bytes);

/// Numbers, lowest byte first.
std::string littleEndian(std::uint64_t value, int bytes);

}  // namespace archiver::test
