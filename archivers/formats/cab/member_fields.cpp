#include "archivers/formats/cab/member_fields.h"

#include <string_view>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver::cab {
namespace {

const char* methodText(int type) noexcept {
    switch (MSCABD_COMP_METHOD(type)) {
        case MSCAB_COMP_NONE:
            return "None";
        case MSCAB_COMP_MSZIP:
            return "MSZIP";
        case MSCAB_COMP_QUANTUM:
            return "Quantum";
        case MSCAB_COMP_LZX:
            return "LZX";
        default:
            return "Unknown";
    }
}

}  // namespace

void fillMember(const mscabd_file& file, std::uint64_t packed, Member& member) {
    const std::string_view stored = file.filename;
    member.name.clear();
    if (isAscii(stored) || ((file.attribs & MSCAB_ATTRIB_UTF_NAME) != 0 && isUtf8(stored)))
        member.name = stored;
    else
        appendLegacyText(stored, LegacyPage::kAnsi, member.name);
    member.originalSize = file.length;
    member.packedSize = packed;
    member.crc = 0;
    member.osType = os_type::kMsDos;
    member.dosDate = static_cast<std::uint16_t>((file.date_y - 1980) << 9 | file.date_m << 5 | file.date_d);
    member.dosTime = static_cast<std::uint16_t>(file.time_h << 11 | file.time_m << 5 | file.time_s >> 1);
    const int kept = attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive;
    member.attributes = static_cast<std::uint8_t>(file.attribs & kept);
    // The format has no folders, but some archivers write empty members for them.
    const bool isFolder = file.length == 0 && (member.name.ends_with('\\') || member.name.ends_with('/'));
    if (isFolder) member.attributes |= attribute::kFolder;
    member.kind = isFolder ? MemberKind::kFolder : MemberKind::kFile;
    member.linkTarget.clear();
    member.method = methodText(file.folder->comp_type);
    member.encrypted = false;
    member.written.reset();
    member.created.reset();
    member.accessed.reset();
}

}  // namespace archiver::cab
