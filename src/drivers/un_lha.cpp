#include "drivers/un_lha.h"

namespace tovar {

constinit const DriverDescription cUnLHA::kDescription{
    .library = L"UnLha32.dll",
    .prefix = "Unlha",
    .messageTitle = L"LHA Message",
    .minimumVersion = 87,
    .changeable = true,
};

cUnLHA::cUnLHA(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
