#include "front/kind_table.h"

#include <algorithm>
#include <string>

#include "drivers/un_ace.h"
#include "drivers/un_arj.h"
#include "drivers/un_cab.h"
#include "drivers/un_lha.h"
#include "drivers/un_rar.h"
#include "drivers/un_tar.h"
#include "drivers/un_zip.h"
#include "shell/paths.h"

namespace tovar {
namespace {

template <class Driver>
std::unique_ptr<ArchiveDriver> make(const DriverServices& services) {
    return std::make_unique<Driver>(services.libraries.getOrMissing(Driver::kDescription), services.messages,
                                    services.regional);
}

template <>
std::unique_ptr<ArchiveDriver> make<cUnAce>(const DriverServices& services) {
    return std::make_unique<cUnAce>(services.libraries.getAceOrMissing(cUnAce::kDescription), services.messages,
                                    services.regional, services.files, services.passwords);
}

constexpr std::wstring_view kZipNames[] = {L"ZIP"};
constexpr std::wstring_view kArjNames[] = {L"ARJ"};
constexpr std::wstring_view kRarNames[] = {L"RAR"};
constexpr std::wstring_view kLzhNames[] = {L"LZH"};
constexpr std::wstring_view kCabNames[] = {L"CAB"};
constexpr std::wstring_view kAceNames[] = {L"ACE"};
constexpr std::wstring_view kTarNames[] = {L"TAR", L"TGZ", L"BZ2", L"GZ", L"Z"};

// A new kind is a row here and its driver; a kind whose driver is not there yet has a row without `makeDriver`.
constexpr KindRow kRows[] = {
    {.bit = kind::kZip,
     .library = L"UnZip32.dll",
     .extensions = kZipNames,
     .minimumVersion = 78,
     .makeDriver = &make<cUnZip>},
    {.bit = kind::kArj,
     .library = L"UnArj32j.dll",
     .extensions = kArjNames,
     .minimumVersion = 12,
     .makeDriver = &make<cUnARJ>},
    {.bit = kind::kRar,
     .library = L"UnRar32.dll",
     .extensions = kRarNames,
     .minimumVersion = 0,
     .makeDriver = &make<cUnRAR>},
    {.bit = kind::kLzh,
     .library = L"UnLha32.dll",
     .extensions = kLzhNames,
     .minimumVersion = 87,
     .creationBit = kind::kCreateLzh,
     .makeDriver = &make<cUnLHA>},
    {.bit = kind::kCab,
     .library = L"Cab32.dll",
     .extensions = kCabNames,
     .minimumVersion = 65,
     .creationBit = kind::kCreateCab,
     .makeDriver = &make<cUnCab>},
    {.bit = kind::kAce, .library = L"UnAce.dll", .extensions = kAceNames, .makeDriver = &make<cUnAce>},
    {.bit = kind::kTar,
     .library = L"Tar32.dll",
     .extensions = kTarNames,
     .minimumVersion = 53,
     .makeDriver = &make<cUnTar>},
    {.bit = kind::kCreateZip, .library = L"InfoZip32.dll", .extensions = {}},
};

}  // namespace

std::span<const KindRow> kindTable() noexcept { return kRows; }

const KindRow* kindByName(std::wstring_view fileName) {
    const std::wstring extension = upperCase(ExtensionPart(fileName));
    for (const KindRow& row : kRows) {
        if (std::ranges::find(row.extensions, extension) != row.extensions.end()) return &row;
    }
    return nullptr;
}

bool IsArchiveName(std::wstring_view fileName) { return kindByName(fileName) != nullptr; }

}  // namespace tovar
