#include "drivers/un_lha.h"

namespace tovar {

constinit const DriverDescription cUnLHA::kDescription{
    .library = L"UnLha32.dll",
    .prefix = "Unlha",
    .messageTitle = L"LHA Message",
    .minimumVersion = 87,
    .changeable = true,
    .columns = {.crcDigits = 4},
    // Its base has no " -x": members always keep their folders.
    .extract = {.base = L" x -a1 -c1 -f1 -jp1 -+",
                .keepFolder = L" -x",
                .flat = L" -e",
                .overwrite = L" -m1",
                .skip = L" -jn1",
                .ask = L" -m0"},
};

cUnLHA::cUnLHA(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
