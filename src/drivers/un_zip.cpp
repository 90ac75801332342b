#include "drivers/un_zip.h"

namespace tovar {

constinit const DriverDescription cUnZip::kDescription{
    .library = L"UnZip32.dll",
    .prefix = "UnZip",
    .messageTitle = L"ZIP Message",
    .minimumVersion = 78,
    .changeable = true,
    .columns = {.crcHeader = L"CRC32"},
};

cUnZip::cUnZip(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
