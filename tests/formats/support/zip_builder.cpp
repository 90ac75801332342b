#include "formats/support/zip_builder.h"

namespace archiver::test {

ZipBuilder& ZipBuilder::add(BuiltMember member) {
    members_.push_back(std::move(member));
    return *this;
}

ZipBuilder& ZipBuilder::prefix(std::string bytes, bool adjustOffsets) {
    prefix_ = std::move(bytes);
    adjustOffsets_ = adjustOffsets;
    return *this;
}

ZipBuilder& ZipBuilder::startAt(std::uint64_t offset) {
    start_ = offset;
    return *this;
}

ZipBuilder& ZipBuilder::comment(std::string text) {
    comment_ = std::move(text);
    return *this;
}

ZipBuilder& ZipBuilder::zip64() {
    zip64_ = true;
    return *this;
}

ZipBuilder& ZipBuilder::claimEntries(std::uint16_t entries) {
    claimedEntries_ = entries;
    return *this;
}

std::string ZipBuilder::build() const {
    constexpr std::uint64_t kAllOnes = 0xFFFFFFFF;
    const std::uint64_t base = start_ + (adjustOffsets_ ? prefix_.size() : 0);
    std::string locals, directory;
    for (const BuiltMember& member : members_) {
        const std::uint64_t offset = base + locals.size();
        const std::uint32_t crc = crcOf(member.content);
        const std::string size = number32(member.content.size());
        locals += std::string("PK\x03\x04") + number16(20) + number16(member.flags) + number16(member.method) +
                  number16(member.dosTime) + number16(member.dosDate) + number32(crc) + size + size +
                  number16(member.name.size()) + number16(0) + member.name + member.content;

        std::string zip64;
        if (member.sizesInZip64) zip64 += number64(member.content.size()) + number64(member.content.size());
        if (member.offsetInZip64) zip64 += number64(offset);
        const std::string extra = (zip64.empty() ? "" : field(0x0001, zip64)) + member.extra;
        const std::string shownSize = member.sizesInZip64 ? number32(kAllOnes) : size;
        directory += std::string("PK\x01\x02") + number16(member.madeBy) + number16(20) + number16(member.flags) +
                     number16(member.method) + number16(member.dosTime) + number16(member.dosDate) + number32(crc) +
                     shownSize + shownSize + number16(member.name.size()) + number16(extra.size()) +
                     number16(member.comment.size()) + number16(0) + number16(0) + number32(member.externalAttributes) +
                     number32(member.offsetInZip64 ? kAllOnes : offset) + member.name + extra + member.comment;
    }
    const std::uint64_t directoryOffset = base + locals.size();
    const std::uint64_t entries = claimedEntries_ < 0 ? members_.size() : static_cast<std::uint64_t>(claimedEntries_);
    std::string ends;
    if (zip64_) {
        ends += std::string("PK\x06\x06") + number64(44) + number16(45) + number16(45) + number32(0) + number32(0) +
                number64(entries) + number64(entries) + number64(directory.size()) + number64(directoryOffset);
        ends += std::string("PK\x06\x07") + number32(0) + number64(directoryOffset + directory.size()) + number32(1);
    }
    ends += std::string("PK\x05\x06") + number16(0) + number16(0) + number16(zip64_ ? 0xFFFF : entries) +
            number16(zip64_ ? 0xFFFF : entries) + number32(zip64_ ? kAllOnes : directory.size()) +
            number32(zip64_ ? kAllOnes : directoryOffset) + number16(comment_.size()) + comment_;
    return prefix_ + locals + directory + ends;
}

std::string ZipBuilder::field(std::uint16_t id, std::string_view data) {
    return number16(id) + number16(data.size()) + std::string(data);
}

std::uint32_t ZipBuilder::crcOf(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

std::string ZipBuilder::number(std::uint64_t value, int bytes) {
    std::string text;
    for (int index = 0; index < bytes; ++index) text += static_cast<char>(value >> (8 * index) & 0xFF);
    return text;
}

}  // namespace archiver::test
