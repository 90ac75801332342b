#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Writes archives header by header, with whatever a test wants in them.
namespace archiver::test {

/// A file of the layout before RAR 5; what is not given is as in a plain stored file.
struct OldRarFile {
    std::string name;
    std::string content = {};                ///< what the sizes and the checksum are of
    std::optional<std::string> packed = {};  ///< the content itself when not given
    std::uint16_t flags = 0;
    std::uint8_t host = 2;
    std::uint8_t version = 29;
    std::uint8_t method = 0x30;
    std::uint32_t time = 0x2AB18BDD;  ///< 2001-05-17 17:30:58
    std::uint32_t attributes = 0x20;
    std::string behindName = {};
    std::optional<std::uint32_t> originalSize = {};  ///< what is claimed instead of the truth
    std::optional<std::uint32_t> crc = {};
};

inline constexpr std::string_view kOldRarSignature{"Rar!\x1A\x07\0", 7};
std::string oldRarMain(std::uint16_t flags = 0);
std::string oldRarFile(const OldRarFile& file);
std::string oldRarEnd(bool more = false);
/// A whole archive.
std::string oldRar(const std::vector<OldRarFile>& files, std::uint16_t mainFlags = 0, bool more = false);

/// A file of the layout of RAR 5.
struct NewRarFile {
    std::string name;
    std::string content = {};
    std::optional<std::string> packed = {};
    std::uint64_t blockFlags = 0;  ///< beyond those of data and extra area
    std::uint64_t flags = 0;       ///< beyond that of the checksum
    std::uint64_t compression = 0;
    std::uint64_t host = 0;
    std::uint64_t attributes = 0x20;
    std::string extra = {};
    std::optional<std::uint64_t> originalSize = {};
    std::optional<std::uint32_t> crc = {};
    bool hasCrc = true;
    std::optional<std::uint32_t> time = {};  ///< seconds since 1970
};

inline constexpr std::string_view kNewRarSignature{"Rar!\x1A\x07\x01\0", 8};
/// @param number  of the volume; none is written for 0
std::string newRarMain(std::uint64_t flags = 0, std::uint64_t number = 0);
std::string newRarFile(const NewRarFile& file);
std::string newRarEnd(bool more = false);
/// Any block; its data has to follow when `fields` tell of some.
std::string newRarBlock(std::string_view fields);
/// A record of a file's extra area.
std::string newRarRecord(std::uint64_t type, std::string_view data);
std::string newRar(const std::vector<NewRarFile>& files, std::uint64_t mainFlags = 0, std::uint64_t number = 0,
                   bool more = false);

/// A number as the layout of RAR 5 stores it.
std::string rarNumber(std::uint64_t value);
std::string littleEndian(std::uint64_t value, int bytes);
/// CRC-32, one bit at a time.
std::uint32_t crc32OneBitAtATime(std::string_view bytes);

}  // namespace archiver::test
