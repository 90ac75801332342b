#include "archivers/formats/zip/member_name.h"

#include <zlib.h>

#include <algorithm>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/little_endian.h"
#include "archivers/formats/utf8.h"
#include "archivers/formats/zip/signatures.h"
#include "archivers/formats/zip/systems.h"

namespace archiver::zip {
namespace {

/// The name in a Unicode Path field; empty when it belongs to another name: a program that does not know the field
/// renamed the member.
std::string_view unicodeNameFor(std::string_view storedName, std::string_view field) {
    if (field.size() <= 5 || field[0] != 1) return {};
    const auto crc =
        ::crc32(0, reinterpret_cast<const Bytef*>(storedName.data()), static_cast<uInt>(storedName.size()));
    if (little_endian::load32(field.data() + 1) != crc) return {};
    const std::string_view name = field.substr(5);
    return isUtf8(name) ? name : std::string_view();
}

}  // namespace

void decodeMemberName(const CentralHeader& header, std::string_view unicodePath, std::string& name) {
    const bool saysUtf8 = (header.flags & flag::kUtf8) != 0 && isUtf8(header.name);
    const std::string_view unicodeName = saysUtf8 ? std::string_view() : unicodeNameFor(header.name, unicodePath);
    if (!unicodeName.empty()) {
        name.assign(unicodeName);
    } else if (saysUtf8 || isAscii(header.name) || (hasUnixMode(header.system()) && isUtf8(header.name))) {
        name.assign(header.name);
    } else {
        name.clear();
        appendLegacyText(header.name, legacyPageOf(header.system()), name);
    }
    std::replace(name.begin(), name.end(), '\0', '_');
}

}  // namespace archiver::zip
