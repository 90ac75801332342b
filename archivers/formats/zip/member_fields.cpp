#include "archivers/formats/zip/member_fields.h"

#include "archivers/formats/little_endian.h"
#include "archivers/formats/moments.h"
#include "archivers/formats/zip/extra_fields.h"
#include "archivers/formats/zip/member_name.h"
#include "archivers/formats/zip/signatures.h"
#include "archivers/formats/zip/systems.h"

namespace archiver::zip {
namespace {

using little_endian::load16;
using little_endian::load32;
using little_endian::load64;

constexpr std::uint32_t kModeFormat = 0170000;
constexpr std::uint32_t kModeFolder = 0040000;
constexpr std::uint8_t kVolumeLabel = 0x08;  ///< DOS attribute

/// Extra fields of one member; empty where there is none.
struct ExtraFields {
    std::string_view zip64, ntfs, timestamp, unicodePath, aes;
};

ExtraFields findExtraFields(std::string_view extra) {
    ExtraFields found;
    forEachExtraField(extra, [&](std::uint16_t id, std::string_view data) {
        switch (id) {
            case extra_id::kZip64:
                found.zip64 = data;
                break;
            case extra_id::kNtfs:
                found.ntfs = data;
                break;
            case extra_id::kExtendedTimestamp:
                found.timestamp = data;
                break;
            case extra_id::kUnicodePath:
                found.unicodePath = data;
                break;
            case extra_id::kAes:
                found.aes = data;
                break;
            default:
                break;
        }
    });
    return found;
}

/// The central form of the field holds the time of writing alone, whatever its flags promise; others are taken as far
/// as they are there. Seconds are signed.
void applyTimestamp(std::string_view field, Member& member) {
    if (field.empty()) return;
    const auto present = static_cast<unsigned char>(field[0]);
    field.remove_prefix(1);
    for (auto* const time : {&member.written, &member.accessed, &member.created}) {
        const int bit = time == &member.written ? 1 : time == &member.accessed ? 2 : 4;
        if ((present & bit) == 0) continue;
        if (field.size() < 4) return;
        *time = Moment{static_cast<std::int32_t>(load32(field.data())), 0};
        field.remove_prefix(4);
    }
}

void applyNtfs(std::string_view field, Member& member) {
    constexpr std::size_t kReserved = 4;
    constexpr std::uint16_t kTimesTag = 1;
    if (field.size() < kReserved) return;
    forEachExtraField(field.substr(kReserved), [&](std::uint16_t tag, std::string_view times) {
        if (tag != kTimesTag || times.size() < 24) return;
        const auto apply = [&](std::size_t offset, std::optional<Moment>& time) {
            if (const std::uint64_t value = load64(times.data() + offset)) time = momentOfFileTime(value);
        };
        apply(0, member.written);
        apply(8, member.accessed);
        apply(16, member.created);
    });
}

std::uint8_t attributesOf(const CentralHeader& header) {
    constexpr std::uint32_t kModeOwnerWrites = 0200;
    auto attributes = static_cast<std::uint8_t>(
        header.externalAttributes &
        (attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kFolder | attribute::kArchive));
    const std::uint32_t mode = header.externalAttributes >> 16;
    if (hasUnixMode(header.system()) && mode != 0) {
        if ((mode & kModeOwnerWrites) == 0) attributes |= attribute::kReadOnly;
        if ((mode & kModeFormat) == kModeFolder) attributes |= attribute::kFolder;
    }
    return attributes;
}

/// Links keep their target as data; devices, pipes and volume labels have nothing that could be unpacked.
MemberKind kindOf(const CentralHeader& header, std::uint8_t attributes) {
    constexpr std::uint32_t kModeFile = 0100000;
    constexpr std::uint32_t kModeLink = 0120000;
    if ((attributes & attribute::kFolder) != 0) return MemberKind::kFolder;
    if (hasUnixMode(header.system())) {
        const std::uint32_t format = header.externalAttributes >> 16 & kModeFormat;
        if (format == kModeLink) return MemberKind::kSymbolicLink;
        if (format != 0 && format != kModeFile) return MemberKind::kSpecial;
    } else if ((header.externalAttributes & kVolumeLabel) != 0) {
        return MemberKind::kSpecial;
    }
    return MemberKind::kFile;
}

Encryption encryptionOf(const CentralHeader& header, const std::optional<AesField>& aes) {
    if ((header.flags & flag::kEncrypted) == 0) return Encryption::kNone;
    if ((header.flags & (flag::kStrongEncryption | flag::kMaskedHeaders)) != 0) return Encryption::kOther;
    if (header.method != kAesMethod) return Encryption::kTraditional;
    return aes ? Encryption::kAes : Encryption::kOther;
}

/// A name's end and the folder attribute tell the same afterwards.
void settleFolder(Member& member) {
    if (member.name.empty()) return;
    const char last = member.name.back();
    if (last == '/') {
        member.attributes |= attribute::kFolder;
    } else if ((member.attributes & attribute::kFolder) != 0 && last != '\\') {
        member.name += '/';
    }
}

}  // namespace

const char* methodText(std::uint16_t method) noexcept {
    switch (method) {
        case 0:
            return "Stored";
        case 1:
            return "Shrunk";
        case 6:
            return "Implode";
        case 8:
            return "Deflate";
        case 9:
            return "Defl64";
        case 12:
            return "BZip2";
        case 14:
            return "LZMA";
        case 93:
            return "Zstd";
        case 95:
            return "XZ";
        case 97:
            return "WavPack";
        case 98:
            return "PPMd";
        default:
            return "Unknown";
    }
}

void applyZip64(std::string_view field, std::initializer_list<std::uint64_t*> values) noexcept {
    for (std::uint64_t* value : values) {
        if (*value != 0xFFFFFFFF) continue;
        if (field.size() < 8) return;
        *value = load64(field.data());
        field.remove_prefix(8);
    }
}

std::optional<AesField> parseAesField(std::string_view field) noexcept {
    constexpr std::uint8_t kStrongest = 3;
    if (field.size() < 7 || field.substr(2, 2) != "AE") return std::nullopt;
    const AesField aes{load16(field.data()), static_cast<std::uint8_t>(field[4]), load16(field.data() + 5)};
    const bool known = (aes.version == 1 || aes.version == 2) && aes.strength >= 1 && aes.strength <= kStrongest;
    return known ? std::optional(aes) : std::nullopt;
}

std::uint64_t localOffsetOf(const CentralHeader& header) noexcept {
    std::uint64_t offset = header.localOffset;
    if (offset != 0xFFFFFFFF) return offset;
    std::uint64_t original = header.originalSize;
    std::uint64_t packed = header.packedSize;
    applyZip64(findExtraFields(header.extra).zip64, {&original, &packed, &offset});
    return offset;
}

void fillMember(const CentralHeader& header, Member& member, MemberData& data) {
    const ExtraFields extra = header.extra.empty() ? ExtraFields() : findExtraFields(header.extra);

    data = {.localOffset = header.localOffset,
            .packedSize = header.packedSize,
            .originalSize = header.originalSize,
            .crc = header.crc,
            .flags = header.flags,
            .storedMethod = header.method,
            .method = header.method,
            .dosTime = header.dosTime};
    applyZip64(extra.zip64, {&data.originalSize, &data.packedSize, &data.localOffset});
    const std::optional<AesField> aes = parseAesField(extra.aes);
    data.encryption = encryptionOf(header, aes);
    if (header.method == kAesMethod && aes) {
        data.method = aes->method;
        data.aes = *aes;
    }

    decodeMemberName(header, extra.unicodePath, member.name);
    member.originalSize = data.originalSize;
    member.packedSize = data.packedSize;
    member.crc = data.crc;
    member.osType = osTypeOf(header.system());
    member.dosDate = header.dosDate;
    member.dosTime = header.dosTime;
    member.attributes = attributesOf(header);
    member.method = methodText(data.method);
    member.encrypted = (header.flags & flag::kEncrypted) != 0;
    member.written.reset();
    member.created.reset();
    member.accessed.reset();
    applyTimestamp(extra.timestamp, member);
    applyNtfs(extra.ntfs, member);
    settleFolder(member);
    member.kind = kindOf(header, member.attributes);
    member.linkTarget.clear();
}

}  // namespace archiver::zip
