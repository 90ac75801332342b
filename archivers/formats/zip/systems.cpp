#include "archivers/formats/zip/systems.h"

#include <iterator>

#include "archivers/formats/archive_reader.h"

namespace archiver::zip {

std::uint32_t osTypeOf(int system) noexcept {
    static constexpr std::uint8_t kTypes[] = {
        os_type::kMsDos,        // 0 FAT
        3,                      // 1 Amiga
        9,                      // 2 OpenVMS
        os_type::kUnix,         // 3
        18,                     // 4 VM/CMS
        7,                      // 5 Atari ST
        5,                      // 6 OS/2 HPFS
        os_type::kMacOs,        // 7 Macintosh
        19,                     // 8 Z-System
        15,                     // 9 CP/M
        os_type::kWindowsNtfs,  // 10
        os_type::kWindowsNtfs,  // 11 as Info-ZIP numbers it
        os_type::kUnknown,      // 12 VSE
        os_type::kUnknown,      // 13 Acorn
        19,                     // 14 VFAT: Windows 95
        os_type::kUnknown,      // 15 MVS
        os_type::kUnknown,      // 16 BeOS
        os_type::kUnknown,      // 17 Tandem
        os_type::kUnknown,      // 18 OS/400
        os_type::kMacOs,        // 19 OS X
    };
    return system >= 0 && system < static_cast<int>(std::size(kTypes)) ? kTypes[system] : os_type::kUnknown;
}

LegacyPage legacyPageOf(int system) noexcept {
    switch (system) {
        case system::kFat:
        case system::kHpfs:
        case system::kNtfs:
        case system::kInfoZipNtfs:
        case system::kVfat:
            return LegacyPage::kOem;
        default:
            return LegacyPage::kAnsi;
    }
}

}  // namespace archiver::zip
