#include "drivers/un_cab.h"

namespace tovar {

constinit const DriverDescription cUnCab::kDescription{
    .library = L"Cab32.dll",
    .prefix = "Cab",
    .messageTitle = L"CAB Message",
    .minimumVersion = 65,
    .hasCursorMode = false,
    .columns = {.packed = false, .ratio = false, .type = false, .crc = false},
    .extract = {.base = L" -x -v", .flatSuffix = L" -j", .overwrite = L" -o"},
};

cUnCab::cUnCab(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
