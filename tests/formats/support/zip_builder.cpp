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
        const std::uint64_t offset = member.offset.value_or(base + locals.size());
        const std::uint32_t crc = member.crc.value_or(crcOf(member.content));
        const std::uint64_t originalSize = member.originalSize.value_or(member.content.size());
        const std::string shownPacked = number32(member.sizesInZip64 ? kAllOnes : member.content.size());
        const std::string shownOriginal = number32(member.sizesInZip64 ? kAllOnes : originalSize);
        const std::string sizes64 =
            member.sizesInZip64 ? number64(originalSize) + number64(member.content.size()) : std::string();
        if (!member.offset) {
            const BuiltMember::Local& local = member.local;
            const std::string name = local.name.value_or(member.name);
            const std::string extra = (sizes64.empty() ? "" : field(0x0001, sizes64)) + local.extra;
            const auto number32Or = [](const std::optional<std::uint32_t>& value, const std::string& otherwise) {
                return value ? number32(*value) : otherwise;
            };
            locals += std::string("PK\x03\x04") + number16(20) + number16(local.flags.value_or(member.flags)) +
                      number16(local.method.value_or(member.method)) + number16(member.dosTime) +
                      number16(member.dosDate) + number32(local.crc.value_or(crc)) +
                      number32Or(local.packedSize, shownPacked) + number32Or(local.originalSize, shownOriginal) +
                      number16(name.size()) + number16(extra.size()) + name + extra + member.content;
        }
        const std::string zip64 = sizes64 + (member.offsetInZip64 ? number64(offset) : std::string());
        const std::string extra = (zip64.empty() ? "" : field(0x0001, zip64)) + member.extra;
        directory += std::string("PK\x01\x02") + number16(member.madeBy) + number16(20) + number16(member.flags) +
                     number16(member.method) + number16(member.dosTime) + number16(member.dosDate) + number32(crc) +
                     shownPacked + shownOriginal + number16(member.name.size()) + number16(extra.size()) +
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

std::string ZipBuilder::deflateStored(std::string_view bytes) {
    std::string packed;
    do {
        const std::string_view block = bytes.substr(0, 0xFFFF);
        bytes.remove_prefix(block.size());
        packed += (bytes.empty() ? '\x01' : '\x00') + number16(block.size()) + number16(block.size() ^ 0xFFFF);
        packed += block;
    } while (!bytes.empty());
    return packed;
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
