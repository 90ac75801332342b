#include "archivers/formats/rar/old_headers.h"

#include <zlib.h>

#include <string>
#include <string_view>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/little_endian.h"
#include "archivers/formats/rar/old_name.h"
#include "archivers/formats/utf8.h"

namespace archiver::rar {
namespace {

using little_endian::load16;
using little_endian::load32;

namespace type {
constexpr std::uint8_t kMain = 0x73;
constexpr std::uint8_t kFile = 0x74;
constexpr std::uint8_t kComment = 0x75;
constexpr std::uint8_t kService = 0x7A;
constexpr std::uint8_t kEnd = 0x7B;
}  // namespace type

namespace host {
constexpr std::uint8_t kMsDos = 0;
constexpr std::uint8_t kWindows = 2;
constexpr std::uint8_t kUnix = 3;
constexpr std::uint8_t kMacOs = 4;
}  // namespace host

constexpr std::size_t kCommonSize = 7;
constexpr std::size_t kMainSize = 13;
constexpr std::size_t kCommentSize = 13;
constexpr std::size_t kFileSize = 32;
constexpr std::uint16_t kHasData = 0x8000;

/// Whether the checksum that a header begins with is that of its first `size` bytes.
bool isWhole(std::string_view header, std::size_t size) noexcept {
    const auto sum = ::crc32(0, reinterpret_cast<const Bytef*>(header.data() + 2), static_cast<uInt>(size - 2));
    return (sum & 0xFFFF) == load16(header.data());
}

void readMain(std::uint16_t flags, Block& block) {
    block.kind = Block::Kind::kMain;
    block.volume = (flags & 0x0001) != 0;
    block.newNames = (flags & 0x0010) != 0;
    block.encryptedHeaders = (flags & 0x0080) != 0;
}

std::string nameOf(std::string_view stored, bool unicode, std::uint8_t hostSystem) {
    const std::size_t length = stored.find('\0');
    const std::string_view bytes = stored.substr(0, length);
    if (unicode && length != std::string_view::npos) return decodeOldName(bytes, stored.substr(length + 1));
    // With the flag and without differences the name is UTF-8, and so it is today on the systems of UNIX.
    if ((unicode || hostSystem > host::kWindows) && isUtf8(bytes)) return std::string(bytes);
    std::string name;
    appendLegacyText(bytes, hostSystem <= host::kWindows ? LegacyPage::kOem : LegacyPage::kAnsi, name);
    return name;
}

std::uint32_t osTypeOf(std::uint8_t hostSystem) noexcept {
    switch (hostSystem) {
        case host::kMsDos:
            return os_type::kMsDos;
        case host::kWindows:
            return os_type::kWindowsNtfs;
        case host::kUnix:
            return os_type::kUnix;
        case host::kMacOs:
            return os_type::kMacOs;
        default:
            return os_type::kUnknown;
    }
}

void readAttributes(std::uint8_t hostSystem, std::uint32_t stored, FileHeader& file) {
    constexpr std::uint32_t kKind = 0170000;
    constexpr std::uint32_t kLink = 0120000;
    constexpr std::uint32_t kOwnerWrites = 0200;
    if (file.folder) {
        file.attributes = attribute::kFolder;
        file.kind = MemberKind::kFolder;
    }
    if (hostSystem <= host::kWindows) {
        file.attributes |= static_cast<std::uint8_t>(
            stored & (attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive));
    } else if (hostSystem == host::kUnix) {
        if ((stored & kKind) == kLink && !file.folder) file.kind = MemberKind::kSymbolicLink;
        if ((stored & kOwnerWrites) == 0) file.attributes |= attribute::kReadOnly;
    }
}

/// The times behind the name: 4 bits for each that say whether it is there, whether it is odd in seconds, and how many
/// bytes tell its steps of 100 nanoseconds.
void readExactTimes(std::string_view bytes, std::uint32_t writtenWords, FileHeader& file) {
    if (bytes.size() < 2) return;
    const std::uint16_t flags = load16(bytes.data());
    bytes.remove_prefix(2);
    std::optional<Moment>* const times[] = {&file.written, &file.created, &file.accessed};
    for (int index = 0; index < 3; ++index) {
        const int kind = flags >> (3 - index) * 4 & 0x0F;
        if ((kind & 8) == 0) continue;
        std::uint32_t words = writtenWords;
        if (index > 0) {
            if (bytes.size() < 4) return;
            words = load32(bytes.data());
            bytes.remove_prefix(4);
        }
        const auto count = static_cast<std::size_t>(kind & 3);
        if (bytes.size() < count) return;
        std::uint32_t steps = 0;
        for (std::size_t at = 0; at < count; ++at) {
            steps |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) << (at + 3 - count) * 8;
        }
        bytes.remove_prefix(count);
        std::optional<Moment> moment =
            momentOfDosStamp({static_cast<std::uint16_t>(words >> 16), static_cast<std::uint16_t>(words & 0xFFFF)});
        constexpr std::uint32_t kStepsPerSecond = 10'000'000;
        if (moment) {
            if ((kind & 4) != 0) ++moment->seconds;
            if (steps < kStepsPerSecond) moment->nanoseconds = steps * 100;
        }
        *times[index] = moment;
    }
}

ReturnCode readFile(std::string_view header, std::uint16_t flags, Block& block) {
    if (header.size() < kFileSize) return kHeaderBroken;
    FileHeader& file = block.file;
    const std::size_t nameSize = load16(header.data() + 26);
    std::size_t at = kFileSize;
    const bool large = (flags & 0x0100) != 0;
    if (header.size() - at < (large ? 8 : 0) + nameSize) return kHeaderBroken;
    file.packedSize = load32(header.data() + 7);
    file.originalSize = load32(header.data() + 11);
    if (large) {
        file.packedSize |= static_cast<std::uint64_t>(load32(header.data() + at)) << 32;
        file.originalSize |= static_cast<std::uint64_t>(load32(header.data() + at + 4)) << 32;
        at += 8;
    }
    constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 62;
    if (file.packedSize > kMostBytes) return kHeaderBroken;
    block.dataSize = file.packedSize;
    file.sizeKnown = file.originalSize <= kMostBytes;

    const auto hostSystem = static_cast<std::uint8_t>(header[15]);
    file.crc = load32(header.data() + 16);
    file.hasCrc = true;
    file.version = static_cast<std::uint8_t>(header[24]);
    file.method = static_cast<std::uint8_t>(static_cast<std::uint8_t>(header[25]) - 0x30);
    file.splitBefore = (flags & 0x0001) != 0;
    file.splitAfter = (flags & 0x0002) != 0;
    file.encrypted = (flags & 0x0004) != 0;
    file.solid = (flags & 0x0010) != 0;
    file.dictionary = static_cast<std::uint8_t>(flags >> 5 & 7);
    file.folder = file.dictionary == 7;
    file.osType = osTypeOf(hostSystem);
    file.name = nameOf(header.substr(at, nameSize), (flags & 0x0200) != 0, hostSystem);
    at += nameSize;
    readAttributes(hostSystem, load32(header.data() + 28), file);

    const std::uint32_t words = load32(header.data() + 20);
    file.stamp = {static_cast<std::uint16_t>(words >> 16), static_cast<std::uint16_t>(words & 0xFFFF)};
    file.written = momentOfDosStamp(file.stamp);
    if ((flags & 0x0400) != 0) at += 8;  // what the password is salted with
    if ((flags & 0x1000) != 0 && at < header.size()) readExactTimes(header.substr(at), words, file);
    return kOk;
}

}  // namespace

ReturnCode readOldBlock(const InputFile& file, std::uint64_t offset, Block& block) {
    block = {};
    if (offset == file.size()) return kNoMoreEntries;
    std::string header(kCommonSize, '\0');
    if (!file.readAll(offset, header)) return kCannotRead;
    const std::size_t size = load16(header.data() + 5);
    if (size < kCommonSize) return kHeaderBroken;
    header.resize(size);
    if (!file.readAll(offset, header)) return kCannotRead;
    const auto kind = static_cast<std::uint8_t>(header[2]);
    const std::uint16_t flags = load16(header.data() + 3);
    block.headerSize = size;
    if ((flags & kHasData) != 0) {
        if (size < kCommonSize + 4) return kHeaderBroken;
        block.dataSize = load32(header.data() + kCommonSize);
    }
    switch (kind) {
        case type::kMain:
            if (size < kMainSize) return kHeaderBroken;
            // An archive's comment can be part of its header, and has a checksum of its own then.
            if (!isWhole(header, size) && ((flags & 0x0002) == 0 || !isWhole(header, kMainSize))) return kHeaderCrc;
            readMain(flags, block);
            return kOk;
        case type::kFile:
        case type::kService:
            if (!isWhole(header, size)) return kHeaderCrc;
            if (const ReturnCode code = readFile(header, flags, block); code != kOk) return code;
            if (kind == type::kFile) block.kind = Block::Kind::kFile;
            return kOk;
        case type::kEnd:
            if (!isWhole(header, size)) return kHeaderCrc;
            block.kind = Block::Kind::kEnd;
            block.moreVolumes = (flags & 0x0001) != 0;
            return kOk;
        default:
            // Comments, signatures and the like of old; what is none of them was no header.
            if (kind < type::kComment || kind > type::kService) return kHeaderBroken;
            // A comment's text is part of its header, and has a checksum of its own.
            if (isWhole(header, size)) return kOk;
            return kind == type::kComment && size >= kCommentSize && isWhole(header, kCommentSize) ? kOk : kHeaderCrc;
    }
}

}  // namespace archiver::rar
