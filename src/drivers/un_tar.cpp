#include "drivers/un_tar.h"

namespace tovar {

constinit const DriverDescription cUnTar::kDescription{
    .library = L"Tar32.dll",
    .prefix = "Tar",
    .messageTitle = L"TAR Message",
    .minimumVersion = 53,
    .columns = {.attributes = false, .packed = false, .ratio = false},
};

cUnTar::cUnTar(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
