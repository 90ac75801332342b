#include "drivers/un_tar.h"

namespace tovar {

constinit const DriverDescription cUnTar::kDescription{
    .library = L"Tar32.dll",
    .prefix = "Tar",
    .messageTitle = L"TAR Message",
    .minimumVersion = 53,
    .columns = {.attributes = false, .packed = false, .ratio = false},
    .extract = {.base = L" xvfo", .listed = L"a", .skip = L" --confirm-overwrite=1", .ask = L" --confirm-overwrite=1"},
};

cUnTar::cUnTar(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
