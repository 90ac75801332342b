#include "archivers/formats/rar/new_headers.h"

#include <zlib.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/little_endian.h"
#include "archivers/formats/utf8.h"

namespace archiver::rar {
namespace {

using little_endian::load32;
using little_endian::load64;

constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 62;

/// Takes fields off the front of a header; once one is missing, all further ones are 0.
class Fields {
public:
    explicit Fields(std::string_view bytes) : bytes_(bytes) {}

    /// A number in groups of 7 bits, the lowest first.
    std::uint64_t number() noexcept {
        std::uint64_t value = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            if (bytes_.empty()) break;
            const auto byte = static_cast<unsigned char>(bytes_.front());
            bytes_.remove_prefix(1);
            if (shift == 63 && byte > 1) break;
            value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            if ((byte & 0x80) == 0) return value;
        }
        good_ = false;
        return 0;
    }
    std::string_view text(std::uint64_t size) noexcept {
        if (size > bytes_.size()) {
            good_ = false;
            return {};
        }
        const std::string_view taken = bytes_.substr(0, static_cast<std::size_t>(size));
        bytes_.remove_prefix(taken.size());
        return taken;
    }
    std::uint32_t word() noexcept {
        const std::string_view bytes = text(4);
        return bytes.empty() ? 0 : load32(bytes.data());
    }
    std::uint64_t doubleWord() noexcept {
        const std::string_view bytes = text(8);
        return bytes.empty() ? 0 : load64(bytes.data());
    }
    [[nodiscard]] bool good() const noexcept { return good_; }
    /// Parts what stands at the end from the rest.
    std::string_view last(std::uint64_t size) noexcept {
        if (size > bytes_.size()) {
            good_ = false;
            return {};
        }
        const std::string_view taken = bytes_.substr(bytes_.size() - static_cast<std::size_t>(size));
        bytes_.remove_suffix(taken.size());
        return taken;
    }
    [[nodiscard]] bool empty() const noexcept { return bytes_.empty(); }

private:
    std::string_view bytes_;
    bool good_ = true;
};

std::string textOf(std::string_view stored) {
    const std::string_view bytes = stored.substr(0, stored.find('\0'));
    if (isUtf8(bytes)) return std::string(bytes);
    std::string text;
    appendLegacyText(bytes, LegacyPage::kAnsi, text);
    return text;
}

std::string nameOf(std::string_view stored) {
    std::string name = textOf(stored);
    // Folders are parted by "/" alone here; where "\" parts them as well it must not make a folder of its own.
    std::replace(name.begin(), name.end(), '\\', '_');
    return name;
}

void readTimes(Fields fields, FileHeader& file) {
    const std::uint64_t flags = fields.number();
    const bool isUnix = (flags & 0x01) != 0;
    std::optional<Moment>* const times[] = {&file.written, &file.created, &file.accessed};
    for (int index = 0; index < 3; ++index) {
        if ((flags & std::uint64_t{0x02} << index) == 0) continue;
        const Moment moment =
            isUnix ? Moment{static_cast<std::int64_t>(fields.word()), 0} : momentOfFileTime(fields.doubleWord());
        if (fields.good()) *times[index] = moment;
    }
    if (!isUnix || (flags & 0x10) == 0) return;
    for (int index = 0; index < 3; ++index) {
        if ((flags & std::uint64_t{0x02} << index) == 0) continue;
        const std::uint32_t nanoseconds = fields.word() & 0x3FFFFFFF;
        if (fields.good() && nanoseconds < 1'000'000'000) (*times[index])->nanoseconds = nanoseconds;
    }
}

void readHash(Fields fields, FileHeader& file) {
    constexpr std::uint64_t kBlake2 = 0;
    constexpr std::size_t kBlake2Size = 32;
    if (fields.number() == kBlake2) file.blake2 = fields.text(kBlake2Size);
}

void readRedirection(Fields fields, FileHeader& file) {
    // 1 to 3 are the symbolic links of UNIX and of Windows, and junctions; 5 is a copy, which another name of the same
    // bytes comes nearest to.
    constexpr std::uint64_t kHardLink = 4;
    const std::uint64_t type = fields.number();
    fields.number();
    const std::string_view target = fields.text(fields.number());
    file.redirected = true;
    file.folder = false;
    file.kind = type < kHardLink ? MemberKind::kSymbolicLink : MemberKind::kHardLink;
    // Other members are told by their names, which are read in one way only.
    file.linkTarget = type < kHardLink ? textOf(target) : nameOf(target);
}

ReturnCode readExtra(std::string_view extra, FileHeader& file) {
    for (Fields records(extra); !records.empty();) {
        Fields record(records.text(records.number()));
        if (!records.good()) return kHeaderBroken;
        switch (record.number()) {
            case 1:
                file.encrypted = true;
                break;
            case 2:
                readHash(record, file);
                break;
            case 3:
                readTimes(record, file);
                break;
            case 5:
                readRedirection(record, file);
                break;
            default:
                break;
        }
    }
    return kOk;
}

void readAttributes(std::uint64_t hostSystem, std::uint64_t stored, FileHeader& file) {
    constexpr std::uint64_t kOwnerWrites = 0200;
    if (file.folder) {
        file.attributes = attribute::kFolder;
        file.kind = MemberKind::kFolder;
    }
    if (hostSystem == 0) {
        file.osType = os_type::kWindowsNtfs;
        file.attributes |= static_cast<std::uint8_t>(
            stored & (attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive));
    } else if (hostSystem == 1) {
        file.osType = os_type::kUnix;
        if ((stored & kOwnerWrites) == 0) file.attributes |= attribute::kReadOnly;
    }
}

ReturnCode readFile(Fields fields, std::string_view extra, std::uint64_t blockFlags, Block& block) {
    FileHeader& file = block.file;
    file.packedSize = block.dataSize;
    file.splitBefore = (blockFlags & 0x08) != 0;
    file.splitAfter = (blockFlags & 0x10) != 0;
    const std::uint64_t flags = fields.number();
    file.folder = (flags & 0x01) != 0;
    file.originalSize = fields.number();
    file.sizeKnown = (flags & 0x08) == 0 && file.originalSize <= kMostBytes;
    if (!file.sizeKnown) file.originalSize = 0;
    const std::uint64_t attributes = fields.number();
    if ((flags & 0x02) != 0) file.written = Moment{static_cast<std::int64_t>(fields.word()), 0};
    file.hasCrc = (flags & 0x04) != 0;
    if (file.hasCrc) file.crc = fields.word();
    const std::uint64_t compression = fields.number();
    file.version = static_cast<std::uint8_t>(compression & 0x3F);
    file.solid = (compression & 0x40) != 0;
    file.method = static_cast<std::uint8_t>(compression >> 7 & 7);
    file.dictionary = static_cast<std::uint8_t>(compression >> 10 & 0x0F);
    readAttributes(fields.number(), attributes, file);
    file.name = nameOf(fields.text(fields.number()));
    if (!fields.good()) return kHeaderBroken;
    if (const ReturnCode code = readExtra(extra, file); code != kOk) return code;
    if (file.written) file.stamp = dosStampOf(*file.written);
    return kOk;
}

/// The whole header behind its checksum and its size.
ReturnCode readHeader(const InputFile& file, std::uint64_t offset, std::string& header, std::uint64_t& headerSize) {
    constexpr std::uint64_t kMostHeaderBytes = std::uint64_t{2} << 20;
    constexpr std::size_t kChecksumSize = 4;
    char start[kChecksumSize + 3];
    const auto got = file.readAt(offset, start);
    if (!got || *got < sizeof(start)) return kCannotRead;
    Fields fields({start + kChecksumSize, sizeof(start) - kChecksumSize});
    const std::uint64_t size = fields.number();
    if (!fields.good() || size == 0 || size > kMostHeaderBytes) return kHeaderBroken;
    std::size_t sizeBytes = 1;
    while ((start[kChecksumSize + sizeBytes - 1] & 0x80) != 0) ++sizeBytes;
    header.resize(sizeBytes + static_cast<std::size_t>(size));
    if (offset > file.size() || header.size() + kChecksumSize > file.size() - offset) return kCannotRead;
    if (!file.readAll(offset + kChecksumSize, header)) return kCannotRead;
    const auto sum = ::crc32(0, reinterpret_cast<const Bytef*>(header.data()), static_cast<uInt>(header.size()));
    if (sum != load32(start)) return kHeaderCrc;
    headerSize = kChecksumSize + header.size();
    header.erase(0, sizeBytes);
    return kOk;
}

}  // namespace

ReturnCode readNewBlock(const InputFile& file, std::uint64_t offset, Block& block) {
    block = {};
    if (offset == file.size()) return kNoMoreEntries;
    std::string header;
    if (const ReturnCode code = readHeader(file, offset, header, block.headerSize); code != kOk) return code;
    Fields fields(header);
    const std::uint64_t kind = fields.number();
    const std::uint64_t flags = fields.number();
    const std::uint64_t extraSize = (flags & 0x01) != 0 ? fields.number() : 0;
    block.dataSize = (flags & 0x02) != 0 ? fields.number() : 0;
    const std::string_view extra = fields.last(extraSize);
    if (!fields.good() || block.dataSize > kMostBytes) return kHeaderBroken;
    switch (kind) {
        case 1: {
            block.kind = Block::Kind::kMain;
            block.newNames = true;
            const std::uint64_t archiveFlags = fields.number();
            block.volume = (archiveFlags & 0x01) != 0;
            if ((archiveFlags & 0x02) != 0) block.volumeNumber = fields.number();
            return fields.good() ? kOk : kHeaderBroken;
        }
        case 2:
            block.kind = Block::Kind::kFile;
            return readFile(fields, extra, flags, block);
        case 4:
            block.kind = Block::Kind::kEncryption;
            return kOk;
        case 5:
            block.kind = Block::Kind::kEnd;
            block.moreVolumes = (fields.number() & 0x01) != 0;
            return fields.good() ? kOk : kHeaderBroken;
        default:
            return kOk;
    }
}

}  // namespace archiver::rar
