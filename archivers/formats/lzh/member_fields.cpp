#include "archivers/formats/lzh/member_fields.h"

#include "archivers/formats/lzh/member_names.h"
#include "archivers/formats/moments.h"

namespace archiver::lzh {
namespace {

std::optional<Moment> momentOf(std::uint64_t fileTime) noexcept {
    if (fileTime == 0) return std::nullopt;
    return momentOfFileTime(fileTime);
}

void fillTimes(const Header& header, Member& member) {
    member.created = momentOf(header.createdAt);
    member.accessed = momentOf(header.accessedAt);
    member.written = momentOf(header.writtenAt);
    if (!member.written && header.unixTime != 0) member.written = Moment{header.unixTime, 0};
    const bool hasDosWords = header.level < 2;
    if (!member.written && !hasDosWords) member.written = Moment{header.time, 0};
    if (hasDosWords && header.time != 0) {
        // What the user saw where the member was packed.
        member.dosDate = static_cast<std::uint16_t>(header.time >> 16);
        member.dosTime = static_cast<std::uint16_t>(header.time & 0xFFFF);
        return;
    }
    const DosStamp stamp = member.written ? dosStampOf(*member.written) : DosStamp{};
    member.dosDate = stamp.date;
    member.dosTime = stamp.time;
}

std::uint8_t attributesOf(const Header& header) noexcept {
    constexpr std::uint16_t kOwnerWrites = 0200;
    std::uint8_t attributes = header.isFolderOrLink() && !header.isLink() ? attribute::kFolder : 0;
    if (header.unixMode != 0) {
        if ((header.unixMode & kOwnerWrites) == 0) attributes |= attribute::kReadOnly;
        return attributes;
    }
    const std::uint8_t kept = attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive;
    return static_cast<std::uint8_t>(attributes | (header.attributes & kept));
}

}  // namespace

std::uint32_t osTypeOf(std::uint8_t system) noexcept {
    switch (system) {
        case 'M':
            return os_type::kMsDos;
        case 'U':
            return os_type::kUnix;
        case 'A':
            return 3;
        case 'm':
            return os_type::kMacOs;
        case '2':
            return 5;
        case 'a':
            return 7;
        case '9':
            return 11;
        case 'K':
            return 12;
        case '3':
            return 13;
        case 'H':
            return 14;
        case 'C':
            return 15;
        case 'F':
            return 16;
        case 'R':
            return 17;
        case 'w':
            return 19;
        case 'W':
            return os_type::kWindowsNtfs;
        default:
            return os_type::kUnknown;
    }
}

void fillMember(const Header& header, Member& member) {
    member.name = memberName(header, member.linkTarget);
    member.originalSize = header.originalSize;
    member.packedSize = header.packedSize;
    member.crc = header.crc.value_or(0);
    member.osType = osTypeOf(header.system);
    member.attributes = attributesOf(header);
    member.method = header.method;
    member.encrypted = false;
    member.kind = header.isLink()           ? MemberKind::kSymbolicLink
                  : header.isFolderOrLink() ? MemberKind::kFolder
                                            : MemberKind::kFile;
    fillTimes(header, member);
}

}  // namespace archiver::lzh
