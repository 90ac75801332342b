#include "drivers/un_rar.h"

namespace tovar {

constinit const DriverDescription cUnRAR::kDescription{
    .library = L"UnRar32.dll",
    .prefix = "Unrar",
    .messageTitle = L"RAR Message",
    .minimumVersion = 0,
    .extract = {.base = L" -x -u ", .keepFolder = L" -x", .flat = L" -e", .overwrite = L" -y", .skip = L" -o-"},
};

cUnRAR::cUnRAR(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
