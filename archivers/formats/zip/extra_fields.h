#pragma once
#include <cstdint>
#include <string_view>

#include "archivers/formats/little_endian.h"

namespace archiver::zip {

/// Extra fields of a header that are understood. Source: PKWARE APPNOTE 6.3.10, 4.5 and 4.6; Info-ZIP, extrafld.txt
namespace extra_id {
inline constexpr std::uint16_t kZip64 = 0x0001;
inline constexpr std::uint16_t kNtfs = 0x000A;
inline constexpr std::uint16_t kExtendedTimestamp = 0x5455;
inline constexpr std::uint16_t kUnicodePath = 0x7075;
inline constexpr std::uint16_t kAes = 0x9901;
}  // namespace extra_id

/// Calls `use(id, data)` for each field. A field that claims to reach beyond the block ends the walk: what stood before
/// it is good.
template <class Use>
void forEachExtraField(std::string_view extra, Use use) {
    while (extra.size() >= 4) {
        const std::uint16_t id = little_endian::load16(extra.data());
        const std::size_t size = little_endian::load16(extra.data() + 2);
        extra.remove_prefix(4);
        if (size > extra.size()) return;
        use(id, extra.substr(0, size));
        extra.remove_prefix(size);
    }
}

/// The data of the last field of that kind; empty when there is none.
inline std::string_view extraField(std::string_view extra, std::uint16_t wanted) {
    std::string_view found;
    forEachExtraField(extra, [&](std::uint16_t id, std::string_view data) {
        if (id == wanted) found = data;
    });
    return found;
}

}  // namespace archiver::zip
