#include "archivers/formats/ace/member_fields.h"

#include <array>
#include <string_view>

#include "archivers/formats/ace/comment.h"
#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver::ace {
namespace {

enum Host : std::uint8_t { kMsDos = 0, kOs2 = 1, kWin32 = 2, kWindowsNt = 5 };

/// Programs of MS-DOS and OS/2 wrote names in the OEM code page, those of Windows in the ANSI one. No other system has
/// either; there UTF-8 is the best guess for names that are.
void appendName(std::string_view bytes, std::uint8_t host, std::string& utf8) {
    if (host == kMsDos || host == kOs2) {
        appendLegacyText(bytes, LegacyPage::kOem, utf8);
    } else if (host != kWin32 && host != kWindowsNt && isUtf8(bytes)) {
        utf8.append(bytes);
    } else {
        appendLegacyText(bytes, LegacyPage::kAnsi, utf8);
    }
}

const char* methodText(std::uint8_t method) noexcept {
    switch (method) {
        case 0:
            return "Stored";
        case 1:
            return "LZ77";
        case 2:
            return "Blocked";
        default:
            return "Unknown";
    }
}

/// A name's end and the folder attribute tell the same afterwards.
void settleFolder(Member& member) {
    if (member.name.empty()) return;
    if (member.name.back() == '\\' || member.name.back() == '/') {
        member.attributes |= attribute::kFolder;
    } else if ((member.attributes & attribute::kFolder) != 0) {
        member.name += '\\';
    }
}

}  // namespace

std::uint32_t osTypeOf(std::uint8_t host) noexcept {
    constexpr std::uint32_t kOs2Type = 5, kNt = 18, kPrimos = 1, kAppleGs = 6, kAtari = 7, kVax = 9, kAmiga = 3,
                            kNext = 8;
    constexpr std::array<std::uint32_t, 13> kTypes = {os_type::kMsDos,
                                                      kOs2Type,
                                                      os_type::kWindowsNtfs,
                                                      os_type::kUnix,
                                                      os_type::kMacOs,
                                                      kNt,
                                                      kPrimos,
                                                      kAppleGs,
                                                      kAtari,
                                                      kVax,
                                                      kAmiga,
                                                      kNext,
                                                      os_type::kUnix};
    return host < kTypes.size() ? kTypes[host] : os_type::kUnknown;
}

void fillMember(const FileHeader& header, std::uint8_t host, Member& member) {
    constexpr std::uint32_t kKnownAttributes =
        attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kFolder | attribute::kArchive;
    const std::string_view name = header.name;
    member.name.clear();
    appendName(name.substr(0, name.find('\0')), host, member.name);
    member.originalSize = header.originalSize;
    member.packedSize = header.packedSize;
    member.crc = ~header.checksum;
    member.osType = osTypeOf(host);
    member.dosDate = static_cast<std::uint16_t>(header.stamp >> 16);
    member.dosTime = static_cast<std::uint16_t>(header.stamp & 0xFFFF);
    member.attributes = static_cast<std::uint8_t>(header.attributes & kKnownAttributes);
    member.method = methodText(header.method);
    member.encrypted = header.has(file_flag::kPassword);
    member.written.reset();
    member.created.reset();
    member.accessed.reset();
    settleFolder(member);
    member.kind = (member.attributes & attribute::kFolder) != 0 ? MemberKind::kFolder : MemberKind::kFile;
    member.linkTarget.clear();
}

void fillHeader(const FileHeader& header, AceHeader& filled) {
    filled.name = header.name;
    filled.flags = header.flags;
    filled.method = header.method;
    filled.quality = header.quality;
    filled.parameters = header.parameters;
    filled.attributes = header.attributes;
    filled.stamp = header.stamp;
    filled.checksum = header.checksum;
    filled.hasComment = header.has(file_flag::kComment);
    filled.comment.reset();
    if (filled.hasComment) filled.comment = unpackComment(header.packedComment);
}

void fillFacts(const MainHeader& header, AceFacts& facts) {
    facts.flags = header.flags;
    facts.versionNeeded = header.versionNeeded;
    facts.versionMadeBy = header.versionMadeBy;
    facts.host = header.host;
    facts.volume = header.volume;
    facts.stamp = header.stamp;
    facts.advert = header.advert;
    facts.hasComment = (header.flags & main_flag::kComment) != 0;
    if (facts.hasComment) facts.comment = unpackComment(header.packedComment);
}

}  // namespace archiver::ace
