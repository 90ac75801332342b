#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace archiver::test {

/// A member as it is to be written.
struct CabMember {
    std::string name;
    std::string content = {};
    std::uint16_t attributes = 0x20;
    std::uint16_t date = 0x2AB1;                            ///< 2001-05-17
    std::uint16_t time = 0x8BDD;                            ///< 17:30:58
    std::optional<std::uint32_t> offset = {}, length = {};  ///< what is claimed instead of the truth
    std::optional<std::uint16_t> folder = {};
};

/// One block of data as it is stored.
struct CabBlock {
    std::string packed;
    std::uint16_t size;  ///< unpacked
};

/// Members that are packed together; without blocks they are stored.
struct CabFolder {
    std::vector<CabMember> members;
    std::uint16_t method = 0;
    std::optional<std::vector<CabBlock>> blocks = {};
};

struct Cabinet {
    std::vector<CabFolder> folders;
    std::uint16_t setId = 12345;
    std::uint16_t index = 0;
    std::string previous = {}, next = {};
    std::uint8_t reserve = 0;  ///< bytes in the header, each folder and each block
    bool checksums = true;
};

std::string cabinetBytes(const Cabinet& cabinet);

/// A block of MSZIP that does not compress.
CabBlock mszipBlock(const std::string& content);

}  // namespace archiver::test
