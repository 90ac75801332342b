#include "drivers/un_rar.h"

namespace tovar {

constinit const DriverDescription cUnRAR::kDescription{
    .library = L"UnRar32.dll",
    .prefix = "Unrar",
    .messageTitle = L"RAR Message",
    .minimumVersion = 0,
};

cUnRAR::cUnRAR(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
