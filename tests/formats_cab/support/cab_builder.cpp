#include "formats_cab/support/cab_builder.h"

#include <algorithm>

namespace archiver::test {
namespace {

std::string number(std::uint64_t value, int bytes) {
    std::string text;
    for (int index = 0; index < bytes; ++index) text += static_cast<char>(value >> (8 * index) & 0xFF);
    return text;
}

/// The exclusive or of all groups of four bytes; a group of fewer at the end counts its bytes from the highest.
std::uint32_t checksum(const std::string& bytes, std::uint32_t seed) {
    std::uint32_t sum = seed;
    std::size_t at = 0;
    for (; bytes.size() - at >= 4; at += 4) {
        for (std::size_t index = 0; index < 4; ++index) {
            sum ^= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + index])) << (8 * index);
        }
    }
    for (std::size_t left = bytes.size() - at; left > 0; --left, ++at) {
        sum ^= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) << (8 * (left - 1));
    }
    return sum;
}

std::vector<CabBlock> storedBlocks(const CabFolder& folder) {
    constexpr std::size_t kBlock = 32768;
    std::string content;
    for (const CabMember& member : folder.members) content += member.content;
    std::vector<CabBlock> blocks;
    for (std::size_t at = 0; at < content.size(); at += kBlock) {
        const std::string piece = content.substr(at, kBlock);
        blocks.push_back({piece, static_cast<std::uint16_t>(piece.size())});
    }
    return blocks;
}

std::string blockBytes(const CabBlock& block, const Cabinet& cabinet) {
    const std::string sizes = number(block.packed.size(), 2) + number(block.size, 2);
    const std::uint32_t sum = cabinet.checksums ? checksum(sizes, checksum(block.packed, 0)) : 0;
    return number(sum, 4) + sizes + std::string(cabinet.reserve, 'r') + block.packed;
}

}  // namespace

std::string cabinetBytes(const Cabinet& cabinet) {
    std::string head;
    if (cabinet.reserve > 0) {
        head += number(cabinet.reserve, 2) + number(cabinet.reserve, 1) + number(cabinet.reserve, 1);
        head += std::string(cabinet.reserve, 'r');
    }
    for (const std::string& name : {cabinet.previous, cabinet.next}) {
        if (!name.empty()) head += name + '\0' + "disk" + '\0';
    }
    std::string members;
    std::uint16_t count = 0;
    for (std::size_t index = 0; index < cabinet.folders.size(); ++index) {
        std::uint32_t offset = 0;
        for (const CabMember& member : cabinet.folders[index].members) {
            const auto size = static_cast<std::uint32_t>(member.content.size());
            members += number(member.length.value_or(size), 4) + number(member.offset.value_or(offset), 4) +
                       number(member.folder.value_or(static_cast<std::uint16_t>(index)), 2) + number(member.date, 2) +
                       number(member.time, 2) + number(member.attributes, 2) + member.name + '\0';
            offset += size;
            ++count;
        }
    }
    const std::size_t table = cabinet.folders.size() * (8 + std::size_t{cabinet.reserve});
    const std::size_t firstMember = 36 + head.size() + table;
    std::string folders, data;
    for (const CabFolder& folder : cabinet.folders) {
        const std::vector<CabBlock> blocks = folder.blocks ? *folder.blocks : storedBlocks(folder);
        folders += number(firstMember + members.size() + data.size(), 4) + number(blocks.size(), 2) +
                   number(folder.method, 2) + std::string(cabinet.reserve, 'r');
        for (const CabBlock& block : blocks) data += blockBytes(block, cabinet);
    }
    const int flags = (cabinet.previous.empty() ? 0 : 1) | (cabinet.next.empty() ? 0 : 2) | (cabinet.reserve ? 4 : 0);
    return "MSCF" + number(0, 4) + number(firstMember + members.size() + data.size(), 4) + number(0, 4) +
           number(firstMember, 4) + number(0, 4) + number(3, 1) + number(1, 1) + number(cabinet.folders.size(), 2) +
           number(count, 2) + number(static_cast<std::uint64_t>(flags), 2) + number(cabinet.setId, 2) +
           number(cabinet.index, 2) + head + folders + members + data;
}

CabBlock mszipBlock(const std::string& content) {
    const auto size = static_cast<std::uint16_t>(content.size());
    return {"CK\x01" + number(size, 2) + number(static_cast<std::uint16_t>(~size), 2) + content, size};
}

}  // namespace archiver::test
