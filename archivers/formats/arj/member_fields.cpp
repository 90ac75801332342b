#include "archivers/formats/arj/member_fields.h"

#include <optional>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/moments.h"
#include "archivers/formats/utf8.h"

namespace archiver::arj {
namespace {

/// The family of MS-DOS: its attributes, its separator, its code page.
bool hasDosAttributes(std::uint8_t host) noexcept {
    return host == host::kMsDos || host == host::kOs2 || host == host::kWindows95 || host == host::kWin32;
}

LegacyPage legacyPageOf(const MainHeader& main, std::uint8_t host) noexcept {
    // The flag had another meaning in archivers before this one.
    constexpr std::uint8_t kFirstWithAnsiPage = 9;
    if ((main.flags & flag::kAnsiPage) != 0 && main.version >= kFirstWithAnsiPage) return LegacyPage::kAnsi;
    return hasDosAttributes(host) ? LegacyPage::kOem : LegacyPage::kAnsi;
}

std::optional<Moment> momentOf(const FileHeader& header, std::uint32_t time) noexcept {
    if (time == 0) return std::nullopt;
    if (header.hasUnixTimes()) return Moment{static_cast<std::int64_t>(time), 0};
    return momentOfDosStamp({static_cast<std::uint16_t>(time >> 16), static_cast<std::uint16_t>(time & 0xFFFF)});
}

void fillTimes(const FileHeader& header, Member& member) {
    member.written.reset();
    if (header.hasUnixTimes()) {
        member.written = Moment{static_cast<std::int64_t>(header.time), 0};
        const DosStamp stamp = dosStampOf(*member.written);
        member.dosDate = stamp.date;
        member.dosTime = stamp.time;
    } else {
        member.dosDate = static_cast<std::uint16_t>(header.time >> 16);
        member.dosTime = static_cast<std::uint16_t>(header.time & 0xFFFF);
    }
    member.accessed = momentOf(header, header.accessTime);
    member.created = momentOf(header, header.creationTime);
}

std::uint8_t attributesOf(const FileHeader& header) noexcept {
    constexpr std::uint16_t kOwnerWrites = 0200;
    std::uint8_t attributes = header.type == FileType::kFolder ? attribute::kFolder : 0;
    if (hasDosAttributes(header.host)) {
        attributes |= static_cast<std::uint8_t>(
            header.mode & (attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive));
    } else if (header.host == host::kUnix || header.host == host::kNext) {
        if ((header.mode & kOwnerWrites) == 0) attributes |= attribute::kReadOnly;
    }
    return attributes;
}

bool isSeparator(char character) noexcept { return character == '/' || character == '\\'; }

}  // namespace

std::uint32_t osTypeOf(std::uint8_t host) noexcept {
    constexpr std::uint32_t kWindows95Type = 19;
    // Up to VAX VMS both count alike.
    constexpr std::uint8_t kLastCommon = 9;
    if (host <= kLastCommon) return host;
    if (host == host::kWindows95) return kWindows95Type;
    return host == host::kWin32 ? os_type::kWindowsNtfs : os_type::kUnknown;
}

const char* methodText(std::uint8_t method) noexcept {
    switch (method) {
        case 0:
            return "Stored";
        case 1:
            return "Method1";
        case 2:
            return "Method2";
        case 3:
            return "Method3";
        case 4:
            return "Method4";
        default:
            return "Unknown";
    }
}

std::string readText(const MainHeader& main, std::uint8_t host, std::string_view stored) {
    if (isUtf8(stored)) return std::string(stored);
    std::string text;
    appendLegacyText(stored, legacyPageOf(main, host), text);
    return text;
}

void fillMember(const MainHeader& main, const FileHeader& header, Member& member) {
    member.name = readText(main, header.host, header.name);
    member.originalSize = header.originalSize;
    member.packedSize = header.packedSize;
    member.crc = header.crc;
    member.osType = osTypeOf(header.host);
    member.attributes = attributesOf(header);
    member.method = methodText(header.method);
    member.encrypted = header.has(flag::kGarbled);
    member.kind = header.type == FileType::kFolder ? MemberKind::kFolder : MemberKind::kFile;
    member.linkTarget.clear();
    fillTimes(header, member);
    if (header.type == FileType::kFolder && (member.name.empty() || !isSeparator(member.name.back()))) {
        const bool backslashes =
            !header.has(flag::kSlashes) && member.name.find('/') == std::string::npos && hasDosAttributes(header.host);
        member.name += backslashes ? '\\' : '/';
    }
}

}  // namespace archiver::arj
